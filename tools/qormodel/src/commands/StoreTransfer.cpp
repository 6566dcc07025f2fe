#include "commands/StoreOptions.h"
#include "commands/Writing.h"

#include "io/SourceFile.h"
#include "io/TargetBuffer.h"
#include "io/TargetFile.h"
#include "model/ModelPath.h"
#include "store/RegFile.h"
#include "store/StoreText.h"
#include "store/TreeExport.h"
#include "store/TreeImport.h"

#include <QOR/Text.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <unistd.h>

namespace qormodel {

namespace {
using Colour = Output::Colour;
using Group = std::shared_ptr<StoreOptions>;

struct ImportOptions {
    std::string file;
    std::optional<std::string> key;
    std::string path = "/";
    std::string base;
    bool isReplacing = false;
    bool isForced = false;
};

struct ExportOptions {
    std::string key;
    std::string into;
    std::string path = "/";
    std::string form;
    std::optional<std::string> base;
    WriteFlags write;
};

void empty(const StoreFile& store, const std::wstring& key) {
    if (!StoreKey::inq(store, key)) return;
    rmTree(store, key);
    if (!key.empty()) return;
    const auto root = StoreKey::make(store, key);
    for (const auto& name : root.listValues()) root.rmValue(name);
}

bool isSame(const std::wstring& a, const std::wstring& b) {
    return keystore::foldName(a) == keystore::foldName(b);
}

// Registry files ----------------------------------------------------------------------------------

// The key of the store for a path of the file. \throws Failure for one that is not below `base`
std::wstring keyOf(const RegStep& step, const std::wstring& base, const std::wstring& key,
                   const SourceFile& source) {
    if (base.empty()) return keyBelow(key, step.key);
    const bool isBase = isSame(step.key, base);
    if (!isBase && !isSame(step.key.substr(0, base.size() + 1), base + L'\\'))
        throw Failure(Place{source.getName(), step.line, {}},
                      "the key " + nameText(step.key) + " is not below " + nameText(base));
    return isBase ? key : keyBelow(key, step.key.substr(base.size() + 1));
}

// What was removed, and was there.
struct Removed {
    std::size_t numKeys = 0;
    std::size_t numValues = 0;
};

// Adds a key with all below it.
void countBelow(const StoreFile& store, const std::wstring& start, Removed& removed) {
    std::vector<std::wstring> waiting{start};
    while (!waiting.empty()) {
        const auto key = StoreKey::inq(store, waiting.back());
        waiting.pop_back();
        if (!key) continue;
        ++removed.numKeys;
        removed.numValues += key->listValues().size();
        for (const auto& name : key->listSubkeys())
            waiting.push_back(keyBelow(key->getPath(), name));
    }
}

void apply(const StoreFile& store, const RegStep& step, const std::wstring& path,
           Removed& removed) {
    switch (step.kind) {
        case RegStep::Kind::MakeKey: StoreKey::make(store, path); break;
        case RegStep::Kind::RemoveKey:
            countBelow(store, path, removed);
            rmTree(store, path);
            break;
        case RegStep::Kind::SetValue:
            StoreKey::make(store, path).setValue(step.name, step.value);
            break;
        case RegStep::Kind::RemoveValue:
            if (StoreKey::make(store, path).rmValue(step.name)) ++removed.numValues;
            break;
    }
}

void importRegFile(const SourceFile& source, const ImportOptions& options, const Group& group,
                   Session& session) {
    const auto steps = readRegFile(source);  // whole, ahead of any change
    const std::wstring key = keyPath(options.key.value_or(""));
    const std::wstring base = keyPath(options.base);
    std::vector<std::wstring> paths;
    for (const auto& step : steps) paths.push_back(keyOf(step, base, key, source));
    const StoreFile store(group->file, WhenMissing::Make);
    StoreChange change(store);
    if (options.isReplacing) empty(store, key);
    Removed removed;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        try {
            apply(store, steps[i], paths[i], removed);
        } catch (const Failure& failure) {
            throw Failure(Place{source.getName(), steps[i].line, {}}, failure.what());
        }
    }
    change.commit();
    const auto count = [&](RegStep::Kind kind, const char* what) {
        return counted(static_cast<std::uint64_t>(std::ranges::count(steps, kind, &RegStep::kind)),
                       what);
    };
    session.output.print("{}, {}; {} and {} removed\n", count(RegStep::Kind::MakeKey, "key"),
                         count(RegStep::Kind::SetValue, "value"), counted(removed.numKeys, "key"),
                         counted(removed.numValues, "value"));
}

void exportRegFile(const StoreFile& store, const ExportOptions& options, RegForm form) {
    const std::wstring key = keyPath(options.key);
    const std::string bytes =
        writeRegFile(store, key, options.base ? keyPath(*options.base) : key, form);
    const WriteFlags& write = options.write;
    if (write.dryRun) return;
    const bool isPrinted = write.output == "-";
    std::optional<TargetFile> file;
    if (!isPrinted) file.emplace(write.output);
    TargetBuffer buffer(isPrinted ? STDOUT_FILENO : file->getDescriptor(), write.output);
    buffer.sputn(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    buffer.finish();
    if (file) file->replace(!write.noBackup);
}

// Model files -------------------------------------------------------------------------------------

Element elementAt(const Document& document, const std::string& path) {
    auto element = inqElement(document, path);
    if (!element) throw Failure(document.placeOf(0, 0), "there is no element " + path);
    return std::move(*element);
}

// Tells of what is not whole. \return whether that keeps the change from being made
bool tell(const std::vector<KeyProblem>& problems, const std::string& file, bool isForced,
          Session& session) {
    for (const auto& problem : problems)
        printNote(describe(Place{file, 0, problem.path}, problem.text));
    if (problems.empty() || isForced) return false;
    printNote(describe(Place{file}, "nothing is written; --force does so all the same"));
    session.exit = Exit::Found;
    return true;
}

void tellWhatStays(const Document& document) {
    std::size_t numParts = 0;
    for (const auto& element : document.outline.elements) numParts += element.strays.size();
    const auto note = [&](std::size_t number, const std::string& what) {
        if (number == 0) return;
        printNote(describe(document.placeOf(0, 0),
                           std::to_string(number) + ' ' + what + (number == 1 ? "" : "s") +
                               " not taken over: a store holds values only"));
    };
    note(listRelations(document).size(), "relation");
    note(numParts, "unknown part");
}

// One line, however many there are.
void tellLongTexts(const std::string& file, const std::vector<std::string>& paths) {
    if (paths.empty()) return;
    const std::string who =
        paths.size() == 1 ? "has" : "and " + counted(paths.size() - 1, "other value") + " have";
    printNote(describe(Place{file, 0, paths.front()},
                       who + " 512 characters or more as a text, which programs that read with "
                             "the library's own visitor pass over"));
}

void importModel(std::unique_ptr<SourceFile> source, const ImportOptions& options,
                 const Group& group, Session& session) {
    if (!options.key)
        throw Failure(Place{source->getName()},
                      "is no registry file: expected Windows Registry Editor Version 5.00 or "
                      "REGEDIT4 in its first line; a model file needs --key KEY, where its tree "
                      "comes");
    const std::wstring key = keyPath(*options.key);
    const Document document = loadDocument(options.file, std::move(source));
    const Element start = elementAt(document, options.path);
    const StoreFile store(group->file, WhenMissing::Make);
    StoreChange change(store);
    if (options.isReplacing) empty(store, key);
    const auto result = importTree(store, key, start, document.outline.title);
    if (tell(result.problems, options.file, options.isForced, session)) return;
    tellWhatStays(document);
    tellLongTexts(options.file, result.longPaths);
    change.commit();
    session.output.print("{}, {}\n", counted(result.numKeys, "key"),
                         counted(result.numValues, "value"));
}

// What keeps values of the store from being written, or from coming back once they are.
bool isAnyWrong(const Document& document, const std::vector<EditResult>& edits,
                const WriteFlags& flags, Session& session) {
    bool isWrong = false;
    for (const auto& edit : edits) {
        if (!edit.refusal) continue;
        printNote(describe(Place{document.file, 0, edit.path}, *edit.refusal));
        isWrong = true;
    }
    if (const auto rounded = flags.force ? std::nullopt : findRounded(document, edits)) {
        printNote(*rounded + "; --force writes it all the same");
        isWrong = true;
    }
    if (!isWrong) return false;
    printNote(describe(Place{document.file}, "nothing is written"));
    session.exit = Exit::Found;
    return true;
}

// One line, which names the first ones.
void tellLeftValues(const StoreFile& store, const Document& document,
                    const std::vector<std::wstring>& left) {
    if (left.empty()) return;
    constexpr std::size_t maxNamed = 5;
    std::string names;
    for (std::size_t i = 0; i < std::min(left.size(), maxNamed); ++i)
        names += (i == 0 ? "" : ", ") + onOneLine(nameText(left[i]));
    if (left.size() > maxNamed) names += ", ...";
    printNote(describe(Place{store.file}, counted(left.size(), "value") + " not taken over, as " +
                                              document.file + " has no place for " +
                                              (left.size() == 1 ? "it: " : "them: ") + names));
}

void exportModel(const StoreFile& store, const ExportOptions& options, Session& session) {
    const std::wstring key = keyPath(options.key);
    if (!StoreKey::inq(store, key)) throw store.failure(key, "is not there");
    std::vector<KeyProblem> problems;
    const FileLock lock = lockTarget(options.write, options.into);
    const Document document =
        options.into.empty() ? makeTree(store, key, problems) : loadDocument(options.into);
    if (!options.into.empty() && !mayBeWritten(document, options.write, session)) return;
    if (tell(problems, store.file, options.write.force, session)) return;
    std::vector<std::wstring> left;
    const auto edits = readValues(store, key, elementAt(document, options.path), &left);
    if (!options.into.empty()) tellLeftValues(store, document, left);
    if (isAnyWrong(document, edits, options.write, session)) return;
    storeDocument(document, options.write);
    if (options.write.output != "-") session.output.print("{}\n", counted(edits.size(), "value"));
}

// -------------------------------------------------------------------------------------------------

bool endsWith(const std::string& text, const std::string& end) {
    return text.size() >= end.size() &&
           QOR::compareIgnoreCase(text.substr(text.size() - end.size()), end) == 0;
}

void runImport(const ImportOptions& options, const Group& group, Session& session) {
    auto source = std::make_unique<SourceFile>(options.file);
    // What is only named so is told as a broken one.
    if (!isRegFile(*source) && !endsWith(options.file, ".reg")) {
        if (!options.base.empty()) throw Failure("--base is for registry files only");
        return importModel(std::move(source), options, group, session);
    }
    if (options.path != "/") throw Failure("--path is for model files only");
    importRegFile(*source, options, group, session);
}

void runExport(const ExportOptions& options, const Group& group, Session& session) {
    if (options.write.output.empty() && options.into.empty())
        throw Failure("expected -o FILE or --into FILE");
    if (options.into.empty() && options.path != "/")
        throw Failure("--path is a place in the file of --into");
    const bool isNamedReg =
        options.form.empty() && options.into.empty() && endsWith(options.write.output, ".reg");
    const bool isReg = isNamedReg || options.form == "reg" || options.form == "reg4";
    if (isReg && !options.into.empty()) throw Failure("--into is for model files only");
    if (!isReg && options.base) throw Failure("--base is for registry files only");
    const StoreFile store(group->file, WhenMissing::FailForReading);
    if (!isReg) return exportModel(store, options, session);
    exportRegFile(store, options, options.form == "reg4" ? RegForm::Version4 : RegForm::Version5);
}

void addImport(CLI::App& group, const Group& store, Session& session) {
    auto* const command = group.add_subcommand(
        "import", "Bring the tree of a model file, or a registry file, into the store");
    const auto options = std::make_shared<ImportOptions>();
    command->add_option("FILE", options->file, "Model file or .reg file, - for the standard input")
        ->required();
    command->add_option("--key", options->key, "Below which key; for a model file it must be told")
        ->option_text("KEY");
    command->add_option("--path", options->path, "The element of the model file; else all of it")
        ->option_text("PATH");
    command
        ->add_option("--base", options->base,
                     "The path that stands in the .reg file for KEY; else none")
        ->option_text("KEY");
    command->add_flag("--replace", options->isReplacing, "Empty the key first");
    command->add_flag("--force", options->isForced,
                      "Also where a value or a name would not come back");
    command->footer(
        "All is one change of the store: where anything is wrong, nothing comes into it.\n\n"
        "Examples:\n  qormodel store --store settings.db import project.model --key Project\n"
        "  qormodel store --store settings.db import settings.reg");
    command->callback([options, store, &session] { runImport(*options, store, session); });
}

void addExport(CLI::App& group, const Group& store, Session& session) {
    auto* const command =
        group.add_subcommand("export", "Bring a key with all below it into a file");
    const auto options = std::make_shared<ExportOptions>();
    command->add_option("--key", options->key, "The key; else the root")->option_text("KEY");
    command->add_option("--into", options->into, "Set the values in this model file")
        ->option_text("MODEL");
    command->add_option("--path", options->path, "The element of that file; else its root")
        ->option_text("PATH");
    command
        ->add_option("--as", options->form, "The form; else by the name of the file: .reg or model")
        ->check(CLI::IsMember({"model", "reg", "reg4"}))
        ->option_text("model|reg|reg4");
    command
        ->add_option("--base", options->base,
                     "The path that stands in the .reg file for KEY; else its own")
        ->option_text("KEY");
    addWriteFlags(*command, options->write);
    command->footer(
        "reg is version 5.00 in UTF-16, reg4 the older REGEDIT4 in code page 1252.\n\n"
        "Examples:\n  qormodel store --store settings.db export --key Project -o project.model\n"
        "  qormodel store --store settings.db export --key Viewer -o viewer.reg");
    command->callback([options, store, &session] { runExport(*options, store, session); });
}
}  // namespace

void addStoreTransfer(CLI::App& group, const std::shared_ptr<StoreOptions>& store,
                      Session& session) {
    addImport(group, store, session);
    addExport(group, store, session);
}

}  // namespace qormodel
