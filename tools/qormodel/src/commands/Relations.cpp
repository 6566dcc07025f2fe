#include "commands/Commands.h"

#include "model/Relations.h"
#include "terminal/JsonOutput.h"

#include <memory>
#include <string>
#include <vector>

namespace qormodel {

namespace {
using Colour = Output::Colour;

struct Options {
    std::string file;
    bool asDot = false;
    bool onlyCycles = false;
    bool onlyDangling = false;
    bool asJson = false;
};

bool isDangling(const Relation& relation) {
    return relation.target.empty() || !relation.isActionKnown;
}

Json describeRelation(const Relation& relation) {
    return {{"observable", relation.observable},
            {"observer", relation.observer},
            {"target", relation.target.empty() ? Json() : Json(relation.target)},
            {"action", relation.action},
            {"actionKnown", relation.isActionKnown},
            {"priority", relation.priority},
            {"when", relation.isAsked ? "before" : "after"},
            {"line", relation.line}};
}

void printRelation(Output& output, const Relation& relation) {
    const std::string mark = isDangling(relation) ? "? " : "";
    output.print("{}{} {} {} ({}, {}, priority {})\n", output.in(Colour::Unknown, mark),
                 relation.observable, relation.isAsked ? "asks" : "tells",
                 relation.target.empty() ? relation.observer : relation.target, relation.action,
                 relation.isAsked ? "before" : "after",
                 relation.priority.empty() ? "0" : relation.priority);
}

// A text as the graph language quotes it.
std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\') result += '\\';
        result += character;
    }
    return result + '"';
}

void printDot(Output& output, const std::vector<Relation>& relations) {
    output.add("digraph relations {\n  rankdir=LR;\n");
    for (const auto& relation : relations)
        output.print("  {} -> {} [label={}{}];\n", quoted(relation.observable),
                     quoted(relation.target.empty() ? relation.observer : relation.target),
                     quoted(relation.action + (relation.isAsked ? " before" : "")),
                     isDangling(relation) ? ", style=dashed" : "");
    output.add("}\n");
}

void printCycles(const Options& options, Session& session,
                 const std::vector<std::vector<std::string>>& cycles) {
    if (options.asJson) return printJson(session.output, "relations", {{"cycles", cycles}});
    for (const auto& cycle : cycles) {
        for (const auto& step : cycle) session.output.print("{} -> ", step);
        session.output.print("{}\n", cycle.front());
    }
}

void run(const Options& options, Session& session) {
    const Document document = loadDocument(options.file);
    auto relations = listRelations(document);
    if (options.onlyCycles) {
        const auto cycles = findCycles(relations);
        if (!cycles.empty()) session.exit = Exit::Found;
        return printCycles(options, session, cycles);
    }
    if (options.onlyDangling) {
        std::erase_if(relations, [](const Relation& each) { return !isDangling(each); });
        if (!relations.empty()) session.exit = Exit::Found;
    }
    if (options.asDot) return printDot(session.output, relations);
    Json described = Json::array();
    for (const auto& relation : relations) {
        if (options.asJson) described.push_back(describeRelation(relation));
        else printRelation(session.output, relation);
    }
    if (options.asJson)
        printJson(session.output, "relations", {{"relations", std::move(described)}});
}
}  // namespace

void addRelations(CLI::App& program, Session& session) {
    auto* const command = program.add_subcommand("relations", "Show who watches whom");
    const auto options = std::make_shared<Options>();
    command->add_option("FILE", options->file, "Model file, - for the standard input")->required();
    auto* const dot =
        command->add_flag("--dot", options->asDot, "Print a graph for the program dot");
    auto* const cycles = command->add_flag(
        "--cycles", options->onlyCycles, "Only circles of containers that watch each other; 1 if any");
    command->add_flag("--dangling", options->onlyDangling,
                      "Only relations that lead nowhere or have no known action; 1 if any");
    auto* const json = command->add_flag("--json", options->asJson, "Print one JSON object");
    dot->excludes(json)->excludes(cycles);
    command->footer("Example:\n  qormodel relations --dangling project.model");
    command->callback([options, &session] { run(*options, session); });
}

}  // namespace qormodel
