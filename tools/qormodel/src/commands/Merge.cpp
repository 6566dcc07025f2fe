#include "commands/Choice.h"
#include "commands/Writing.h"

#include "merge/ConflictList.h"
#include "merge/ThreeWay.h"
#include "merge/TwoWay.h"

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace qormodel {

namespace {
struct Options {
    std::vector<std::string> files;
    TwoWayOptions twoWay;
    std::optional<Side> preferred;
    std::string name;
    WriteFlags write;
};

const std::map<std::string, Side> sides{{"ours", Side::Ours}, {"theirs", Side::Theirs}};
const std::map<std::string, Telling> tellings{
    {"never", Telling::Never}, {"end", Telling::AtTheEnd}, {"each", Telling::Each}};

// A base that git does not have is an empty file: both sides have added theirs.
Document loadBase(const std::string& file) {
    if (file != "/dev/null" && SourceFile(file).getSize() > 0) return loadDocument(file);
    Document document;
    document.file = file;
    document.root = ac::Object::create();
    return document;
}

bool isPrinted(const Options& options) { return options.write.output != "-"; }

void mergeTwo(const Options& options, Session& session) {
    if (options.preferred) throw Failure("--prefer is for BASE OURS THEIRS");
    const FileLock lock = lockTarget(options.write, options.files[0], options.files);
    Document target = loadDocument(options.files[0]);
    Document source = loadDocument(options.files[1]);
    if (!mayBeWritten(target, options.write, session)) return;
    if (!mayBeWritten(source, options.write, session)) return;
    const TwoWayResult result = mergeTwoWays(target, source, options.twoWay);
    for (const auto& note : result.notes) printNote(note);
    if (!result.notes.empty()) session.exit = Exit::Found;
    storeDocument(target, options.write, {&source});
    if (!isPrinted(options)) return;
    session.output.print("attributes: {} changed, {} added, {} removed\n", result.values.numChanged,
                         result.values.numAttributesAdded, result.values.numAttributesRemoved);
    session.output.print("fields:     {} added, {} removed\n", result.values.numFieldsAdded,
                         result.values.numFieldsRemoved);
    session.output.print("objects:    {} added, {} removed, {} moved\n", result.numObjectsAdded,
                         result.numObjectsRemoved, result.numObjectsMoved);
}

// Where the result goes, by the name that people know: git hands out files without one.
std::string nameOf(const Options& options) {
    if (!options.name.empty()) return options.name;
    return options.write.output.empty() ? options.files[1] : options.write.output;
}

void reportConflicts(const std::vector<Conflict>& conflicts, const Options& options,
                     Session& session) {
    const std::string name = nameOf(options);
    for (const auto& conflict : conflicts)
        printNote(describe(Place{name, 0, conflict.path}, describe(conflict)));
    if (!conflicts.empty()) session.exit = Exit::Found;
    if (options.write.dryRun || name == "-") return;
    storeConflicts(name, conflicts);
    if (!conflicts.empty())
        printNote("ours stands; what is in conflict is listed in " + conflictListOf(name));
}

void mergeThree(const Options& options, Session& session) {
    const TwoWayOptions& two = options.twoWay;
    if (two.keep || !two.onlyMarked.empty() || two.telling != Telling::Never)
        throw Failure("--keep, --only-marked and --observers are for TARGET SOURCE");
    const FileLock lock = lockTarget(options.write, options.files[1], options.files);
    const Document base = loadBase(options.files[0]);
    Document ours = loadDocument(options.files[1]);
    Document theirs = loadDocument(options.files[2]);
    if (!mayBeWritten(ours, options.write, session)) return;
    if (!mayBeWritten(theirs, options.write, session)) return;
    const ThreeWayResult result = mergeThreeWays(base, ours, theirs, options.preferred);
    storeDocument(ours, options.write, {&base, &theirs});
    reportConflicts(result.conflicts, options, session);
    if (isPrinted(options))
        session.output.print("attributes: {} changed\nelements:   {} added, {} removed\n",
                             result.numAttributes, result.numAdded, result.numRemoved);
}

void run(const Options& options, Session& session) {
    if (std::count(options.files.begin(), options.files.end(), "-") > 1)
        throw Failure("only one file can be the standard input");
    if (options.files.size() == 2) return mergeTwo(options, session);
    if (options.files.size() == 3) return mergeThree(options, session);
    throw Failure("expected TARGET SOURCE or BASE OURS THEIRS");
}
}  // namespace

void addMerge(CLI::App& program, Session& session) {
    auto* const command = program.add_subcommand(
        "merge", "Bring a file to the state of another, or merge two versions of one");
    const auto options = std::make_shared<Options>();
    command->add_option("FILE", options->files, "TARGET SOURCE, or BASE OURS THEIRS")->required();
    command->add_flag("--keep", options->twoWay.keep,
                      "Remove nothing from TARGET that SOURCE does not have");
    command
        ->add_option("--only-marked", options->twoWay.onlyMarked,
                     "Take over only what stands at and below these paths; removes nothing")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->option_text("PATH,...");
    command
        ->add_option("--observers", options->twoWay.telling,
                     "When observers hear of it: each change (they may refuse), end or never")
        ->transform(choiceOf(tellings))
        ->option_text("never|end|each");
    command
        ->add_option("--prefer", options->preferred,
                     "Whose change stands where both sides have one; else it is a conflict")
        ->transform(choiceOf(sides))
        ->option_text("ours|theirs");
    command->add_option("--name", options->name,
                        "The name of the result in messages and of its list of conflicts");
    addWriteFlags(*command, options->write);
    command->footer(
        "The result replaces TARGET or OURS. Conflicts keep ours, are listed in "
        "FILE.conflicts.json\nand give the exit status 1.\n\n"
        "Examples:\n  qormodel merge project.model other.model -o merged.model\n"
        "  qormodel merge base.model ours.model theirs.model");
    command->callback([options, &session] { run(*options, session); });
}

}  // namespace qormodel
