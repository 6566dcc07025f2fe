#include "commands/Commands.h"
#include "commands/ToleranceOption.h"

#include "compare/Diff.h"
#include "model/Values.h"
#include "terminal/JsonOutput.h"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace qormodel {

namespace {
using Colour = Output::Colour;
using Kind = Change::Kind;

struct Options {
    std::vector<std::string> files;
    std::string tolerance;
    bool isQuiet = false;
    bool onlyCounts = false;
    bool asJson = false;
    bool isForGit = false;
};

Colour colourOf(char sign) {
    switch (sign) {
        case '-': return Colour::Removed;
        case '+': return Colour::Added;
        case '~': return Colour::Changed;
        default: return Colour::Unknown;
    }
}

std::string describe(const Change& change) {
    const std::string type =
        change.kind == Kind::Attribute && change.sign != '~'
            ? ' ' + (change.first ? change.first : change.second)->getClassName()
            : "";
    const std::string& only = change.sign == '-' ? change.before : change.after;
    switch (change.kind) {
        case Kind::Title: return "title: " + change.before + " -> " + change.after;
        case Kind::Place: return change.path + ": " + change.before + ", now " + change.otherPath;
        case Kind::Order: return change.path + ": " + change.before;
        case Kind::Object:
        case Kind::Field: return change.path + ' ' + only;
        case Kind::Relation: return change.path + ' ' + only;
        case Kind::Attribute:
        case Kind::Content: break;
    }
    if (change.sign == '-' || change.sign == '+') return change.path + " = " + only + type;
    return change.path + ": " + change.before + " -> " + change.after;
}

void printChanges(const std::vector<Change>& changes, Output& output) {
    for (const auto& change : changes)
        output.print("{} {}\n", output.in(colourOf(change.sign), std::string(1, change.sign)),
                     describe(change));
}

void printCounts(const std::vector<Change>& changes, Output& output) {
    std::map<std::pair<Kind, char>, std::size_t> counts;
    for (const auto& change : changes) ++counts[{change.kind, change.sign}];
    for (const auto& [key, count] : counts)
        output.print("{} {:>6} {}\n", output.in(colourOf(key.second), std::string(1, key.second)),
                     count, wordFor(key.first));
}

Json describeAsJson(const Change& change) {
    Json described{{"sign", std::string(1, change.sign)},
                   {"kind", wordFor(change.kind)},
                   {"path", change.path}};
    if (!change.otherPath.empty()) described["otherPath"] = change.otherPath;
    if (change.kind != Kind::Attribute) {
        if (!change.before.empty()) described["before"] = change.before;
        if (!change.after.empty()) described["after"] = change.after;
        return described;
    }
    if (change.first) {
        described["type"] = change.first->getClassName();
        described["before"] = valueJson(*change.first);
    }
    if (change.second) {
        if (!change.first || change.first->getClassName() != change.second->getClassName())
            described[change.first ? "otherType" : "type"] = change.second->getClassName();
        described["after"] = valueJson(*change.second);
    }
    return described;
}

void printAll(const std::vector<Change>& changes, const Options& options, Output& output) {
    if (options.isQuiet) return;
    if (options.onlyCounts && !options.asJson) return printCounts(changes, output);
    if (!options.asJson) return printChanges(changes, output);
    Json list = Json::array();
    for (const auto& change : changes) list.push_back(describeAsJson(change));
    printJson(output, "diff", {{"changes", std::move(list)}});
}

// A version that git does not have is a document with nothing in it.
Document loadVersion(const std::string& file) {
    if (file != "/dev/null") return loadDocument(file);
    Document document;
    document.file = file;
    document.root = ac::Object::create();
    return document;
}

// Git gives the path, then file, hash and mode of either version, and two more behind a rename. It
// stops at a status that is not 0, also where one file of a history is broken.
void runForGit(const Options& options, Session& session) {
    const auto& words = options.files;
    if (words.size() != 7 && words.size() != 9)
        throw Failure("--git takes the 7 arguments of git's external diff");
    session.output.print("{}\n", session.output.in(Colour::Strong, "qormodel diff " + words[0]));
    try {
        const Document first = loadVersion(words[1]);
        const Document second = loadVersion(words[4]);
        printAll(compareDocuments(first, second, toleranceOf(options.tolerance)), options,
                 session.output);
    } catch (const Failure& failure) {
        session.output.print("{} {}\n", session.output.in(Colour::Unknown, "?"), failure.what());
    }
}

void run(const Options& options, Session& session) {
    const Tolerance tolerance = toleranceOf(options.tolerance);
    if (options.isForGit) return runForGit(options, session);
    if (options.files.size() != 2) throw Failure("expected two files to compare");
    if (options.files[0] == "-" && options.files[1] == "-")
        throw Failure("only one of the two can be the standard input");
    const Document first = loadDocument(options.files[0]);
    const Document second = loadDocument(options.files[1]);
    const auto changes = compareDocuments(first, second, tolerance);
    printAll(changes, options, session.output);
    if (!changes.empty()) session.exit = Exit::Found;
}
}  // namespace

void addDiff(CLI::App& program, Session& session) {
    auto* const command = program.add_subcommand("diff", "Tell what differs between two files");
    const auto options = std::make_shared<Options>();
    command->add_option("A B", options->files, "Model files, - for the standard input")->required();
    addTolerance(*command, options->tolerance);
    command->add_flag("-q,--quiet", options->isQuiet, "Print nothing: the exit status tells");
    command->add_flag("--stat", options->onlyCounts, "Print how many differences of which kind");
    command->add_flag("--json", options->asJson, "Print one JSON object");
    command->add_flag("--git", options->isForGit, "Take the 7 arguments of git's external diff");
    command->footer(
        "Signs: - only in A, + only in B, ~ in both, ? not understood.\n"
        "Exits with 1 where something differs; with --git never.\n\n"
        "Example:\n  qormodel diff old.model new.model");
    command->callback([options, &session] { run(*options, session); });
}

}  // namespace qormodel
