#include "commands/Choice.h"
#include "commands/Writing.h"

#include "io/TargetBuffer.h"
#include "io/TargetFile.h"
#include "model/ContentJson.h"
#include "model/Mask.h"
#include "terminal/SpooledOutput.h"

#include <AttributeContainer/ModelFormat.h>

#include <map>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include <unistd.h>

namespace qormodel {

namespace {
enum class Form { Text, Xml, Export, Json };

const std::map<std::string, Form> forms{
    {"text", Form::Text}, {"xml", Form::Xml}, {"export", Form::Export}, {"json", Form::Json}};

struct Options {
    std::vector<std::string> files;
    Form form = Form::Text;
    std::vector<std::string> mask;
    WriteFlags write;

    bool isMasked() const { return !mask.empty(); }
    bool isPrinted() const { return write.output.empty() || write.output == "-"; }
};

/// What one run writes, one document after the other.
class Writer {
public:
    Writer(const Options& options, std::streambuf& target) : options(options), target(target) {
        if (options.form == Form::Json) json.emplace(target, "cat");
    }

    void add(const Document& document) {
        if (json) return json->add(document, options.isMasked());
        if (options.form == Form::Export)
            return exportDocument(document, target, document.file, options.isMasked());
        const int format =
            options.form == Form::Xml ? ac::ModelFormat::XmlV2 : ac::ModelFormat::Text;
        writeDocument(document, target, document.file, {format, options.isMasked()});
    }
    void finish() {
        if (json) json->finish();
    }

private:
    const Options& options;
    std::streambuf& target;
    std::optional<ContentJson> json;
};

// Only the text form is read back, so only there something can get lost unseen.
bool mayBeTaken(const Document& document, const Options& options, Session& session) {
    return options.form != Form::Text ||
           mayBeWritten(document, options.write, session, options.mask);
}

// \return the target as it was read, if it is one of the files
std::optional<FileVersion> writeAll(const Options& options, Session& session,
                                    std::streambuf& target) {
    std::optional<FileVersion> seen;
    Writer writer(options, target);
    for (const auto& file : options.files) {
        const Document document = loadDocument(file);
        if (!options.isPrinted() && !seen) seen = inqVersionRead(options.write.output, document);
        if (!mayBeTaken(document, options, session)) continue;
        if (options.isMasked()) markOnly(document, options.mask);
        writer.add(document);
    }
    writer.finish();
    return seen;
}

void print(const Options& options, Session& session) {
    if (::isatty(STDOUT_FILENO) == 1) {  // through the pager, then
        std::stringbuf buffer;
        writeAll(options, session, buffer);
        return session.output.add(buffer.view());
    }
    SpooledOutput output;
    writeAll(options, session, output.getBuffer());
    output.finish();
}

void run(const Options& options, Session& session) {
    if (options.isPrinted()) return print(options, session);
    if (options.files.size() > 1 && options.form != Form::Json)
        throw Failure("-o takes one file, unless it is written as JSON");
    const FileLock lock = lockTarget(options.write, options.files.front(), options.files);
    TargetFile file(options.write.output);
    TargetBuffer buffer(file.getDescriptor(), options.write.output);
    const auto seen = writeAll(options, session, buffer);
    buffer.finish();
    if (session.exit == Exit::Done) file.replace(!options.write.noBackup, seen);
}
}  // namespace

void addCat(CLI::App& program, Session& session) {
    auto* const command = program.add_subcommand("cat", "Print the content in a chosen form");
    const auto options = std::make_shared<Options>();
    command->add_option("FILE", options->files, "Model files, - for the standard input")
        ->required();
    command
        ->add_option("--as", options->form,
                     "The form: text, xml, json, or export, which has no child objects")
        ->transform(choiceOf(forms))
        ->option_text("text|xml|export|json");
    command
        ->add_option("--mask", options->mask,
                     "Only the attributes at and below these paths, with the objects on the way")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->option_text("PATH,...");
    command
        ->add_option("-o,--output", options->write.output,
                     "Where to write; else the standard output")
        ->check(checkFileName)
        ->option_text("FILE");
    command->add_flag("--no-backup", options->write.noBackup,
                      "Keep no copy of the old file as FILE~");
    command->add_flag("--force", options->write.force,
                      "Write text even where something would get lost");
    command->footer("Example:\n  qormodel cat --as json --mask /Scans project.model");
    command->callback([options, &session] { run(*options, session); });
}

}  // namespace qormodel
