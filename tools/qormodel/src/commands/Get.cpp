#include "commands/Commands.h"

#include "model/Document.h"
#include "model/ModelPath.h"
#include "model/Values.h"
#include "terminal/JsonOutput.h"

#include <memory>
#include <string>
#include <vector>

namespace qormodel {

namespace {
struct Options {
    std::string file;
    std::vector<std::string> paths;
    bool isRecursive = false;
    bool asJson = false;
    bool isValueExpected = false;
};

/// What one run collects.
struct Found {
    Output& output;
    const Options& options;
    Json values = Json::array();
    bool isAnyMissing = false;

    void add(const std::string& path, const ac::Attribute& attribute, bool withPath) {
        if (options.asJson) {
            values.push_back({{"path", path},
                              {"type", attribute.getClassName()},
                              {"value", valueJson(attribute)}});
        } else if (withPath) {
            output.print("{} = {}\n", path, valueText(attribute));
        } else {
            output.print("{}\n", valueText(attribute));
        }
    }
};

// All attributes at and below an element.
void addBelow(const Element& start, Found& found) {
    forEachElementBelow(start, [&](const Element& element) {
        forEachAttribute(*element.container, [&](const auto& attribute) {
            found.add(pathBelow(element.path, attribute->getName()), *attribute, true);
        });
        return found.options.isRecursive;
    });
}

void addPath(const Document& document, const std::string& path, Found& found) {
    if (const auto attribute = inqAttribute(document, path))
        return found.add(attribute->path, *attribute->attribute, false);
    const auto element = inqElement(document, path);
    if (element && found.options.isRecursive) return addBelow(*element, found);
    found.isAnyMissing = true;
    printNote(describe(document.placeOf(0, 0),
                       element ? path + " is no attribute: -r gives all that it holds"
                               : "there is no attribute " + path));
}

void run(const Options& options, Session& session) {
    const Document document = loadDocument(options.file);
    Found found{session.output, options};
    for (const auto& path : options.paths) addPath(document, path, found);
    if (options.asJson) printJson(session.output, "get", {{"values", std::move(found.values)}});
    if (found.isAnyMissing && options.isValueExpected) session.exit = Exit::Found;
}
}  // namespace

void addGet(CLI::App& program, Session& session) {
    auto* const command = program.add_subcommand("get", "Print values, one a line");
    const auto options = std::make_shared<Options>();
    command->add_option("FILE", options->file, "Model file, - for the standard input")->required();
    command->add_option("PATH", options->paths, "Paths of attributes, as in /Scans/First/Points")
        ->required();
    command->add_flag("-r,--recursive", options->isRecursive,
                      "All attributes at and below an object or field");
    command->add_flag("-e,--exit-status", options->isValueExpected,
                      "Exit with 1 where a path has no value");
    command->add_flag("--json", options->asJson, "Print one JSON object");
    command->footer("Example:\n  qormodel get project.model /Name");
    command->callback([options, &session] { run(*options, session); });
}

}  // namespace qormodel
