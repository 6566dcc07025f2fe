#include "commands/Writing.h"

#include "terminal/SpooledOutput.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qormodel {

namespace {
struct Options {
    std::vector<std::string> files;
    bool isCheck = false;
    bool isInPlace = false;
    WriteFlags write;
};

// Compares with the source what it is given, piece by piece, and keeps nothing.
class SameAsSource : public std::streambuf {
public:
    explicit SameAsSource(const SourceFile& source) : source(source), chunk(chunkSize) {
        setp(chunk.data(), chunk.data() + chunk.size());
    }

    bool isSame() {
        compareChunk();
        return isSoFar && offset == source.getSize();
    }

protected:
    int_type overflow(int_type character) override {
        compareChunk();
        if (traits_type::eq_int_type(character, traits_type::eof())) return 0;
        return sputc(traits_type::to_char_type(character));
    }

private:
    static constexpr std::size_t chunkSize = std::size_t{1} << 18;

    void compareChunk() {
        const std::string_view text(pbase(), static_cast<std::size_t>(pptr() - pbase()));
        isSoFar = isSoFar && source.slice(offset, offset + text.size()) == text;
        offset += text.size();
        setp(chunk.data(), chunk.data() + chunk.size());
    }

    const SourceFile& source;
    std::vector<char> chunk;
    std::uint64_t offset = 0;
    bool isSoFar = true;
};

bool isCanonical(const Document& document) {
    SameAsSource target(*document.source);
    writeDocument(document, target, document.file);
    return target.isSame();
}

/// \param spool where the text goes; none for a file
void formatFile(const std::string& file, const Options& options, Session& session,
                std::optional<SpooledOutput>& spool) {
    const bool isStored = !spool && !options.isCheck;
    const FileLock lock = isStored ? lockTarget(options.write, file) : FileLock();
    const Document document = loadDocument(file);
    const bool isSame = isCanonical(document);
    if (options.isCheck) {
        if (isSame) return;
        session.output.print("{}\n", file);
        session.exit = Exit::Found;
        return;
    }
    if (!mayBeWritten(document, options.write, session)) return;
    if (options.isInPlace && isSame) return;
    if (!spool) return storeDocument(document, options.write);
    if (!options.write.dryRun) writeDocument(document, spool->getBuffer(), file);
}

void run(const Options& options, Session& session) {
    if (options.isInPlace && !options.write.output.empty())
        throw Failure("-i and -o exclude each other");
    if (!options.write.output.empty() && options.files.size() > 1)
        throw Failure("-o takes one file");
    std::optional<SpooledOutput> spool;
    const bool isPrinted = options.write.output.empty() || options.write.output == "-";
    if (isPrinted && !options.isInPlace && !options.isCheck) spool.emplace();
    for (const auto& file : options.files) formatFile(file, options, session, spool);
    if (spool) spool->finish();
}
}  // namespace

void addFmt(CLI::App& program, Session& session) {
    auto* const command =
        program.add_subcommand("fmt", "Bring model files into their canonical text");
    const auto options = std::make_shared<Options>();
    command->add_option("FILE", options->files, "Model files, - for the standard input")
        ->required();
    command->add_flag("--check", options->isCheck, "List files that are not canonical; 1 if any");
    command->add_flag("-i,--in-place", options->isInPlace, "Replace the files");
    addWriteFlags(*command, options->write);
    command->footer("Example:\n  qormodel fmt -i project.model");
    command->callback([options, &session] { run(*options, session); });
}

}  // namespace qormodel
