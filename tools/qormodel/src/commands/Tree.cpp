#include "commands/Commands.h"

#include "model/Document.h"
#include "model/Elements.h"
#include "model/ModelPath.h"
#include "model/Values.h"
#include "terminal/JsonOutput.h"

#include <limits>
#include <memory>
#include <string>

namespace qormodel {

namespace {
using Colour = Output::Colour;

struct Options {
    std::string file;
    std::string path = "/";
    bool withAttributes = false;
    int maxLevel = std::numeric_limits<int>::max();
    bool onlyUnknown = false;
    bool asJson = false;
};

constexpr std::size_t valueLength = 60;

void printAttributes(Output& output, const Element& element) {
    forEachAttribute(*element.container, [&](const auto& attribute) {
        output.print("{:{}}{} = {} {}\n", "", 2 * element.depth + 4, attribute->getName(),
                     shortValueText(*attribute, valueLength),
                     output.in(Colour::Faint, attribute->getClassName()));
    });
}

void printElement(Output& output, const Element& element) {
    const bool isUnknown = isUnknownClass(*element.container);
    const std::string mark = isUnknown ? "? " : element.isField ? ". " : "";
    const std::string name = element.depth == 0 ? element.path : element.container->getName();
    output.print("{:{}}{}{} {}\n", "", 2 * element.depth,
                 output.in(isUnknown ? Colour::Unknown : Colour::Faint, mark),
                 output.in(Colour::Strong, name),
                 output.in(Colour::Faint, classOf(*element.container)));
}

Json describeElement(const Element& element, bool withAttributes) {
    Json described{{"path", element.path},
                   {"class", classOf(*element.container)},
                   {"kind", element.isField ? "field" : "object"},
                   {"unknown", isUnknownClass(*element.container)}};
    if (!withAttributes) return described;
    Json attributes = Json::array();
    forEachAttribute(*element.container, [&](const auto& attribute) {
        attributes.push_back({{"name", attribute->getName()},
                              {"type", attribute->getClassName()},
                              {"value", valueJson(*attribute)}});
    });
    described["attributes"] = std::move(attributes);
    return described;
}

void run(const Options& options, Session& session) {
    const Document document = loadDocument(options.file);
    const auto start = inqElement(document, options.path);
    if (!start) throw Failure(document.placeOf(0, 0), "there is no element " + options.path);
    Json elements = Json::array();
    forEachElementBelow(*start, [&](const Element& element) {
        if (element.depth > options.maxLevel) return false;
        if (options.onlyUnknown && !isUnknownClass(*element.container)) return true;
        if (options.asJson) {
            elements.push_back(describeElement(element, options.withAttributes));
        } else {
            printElement(session.output, element);
            if (options.withAttributes) printAttributes(session.output, element);
        }
        return true;
    });
    if (options.asJson) printJson(session.output, "tree", {{"elements", std::move(elements)}});
}
}  // namespace

void addTree(CLI::App& program, Session& session) {
    auto* const command = program.add_subcommand("tree", "Show objects and fields as an outline");
    const auto options = std::make_shared<Options>();
    command->add_option("FILE", options->file, "Model file, - for the standard input")->required();
    command->add_option("PATH", options->path, "Where to begin");
    command->add_flag("-a,--attributes", options->withAttributes, "Show attributes and values too");
    command->add_option("-L,--level", options->maxLevel, "How many levels to go down")
        ->check(CLI::Range(0, std::numeric_limits<int>::max()))
        ->option_text("N");
    command->add_flag("--unknown", options->onlyUnknown, "Only what this program does not know");
    command->add_flag("--json", options->asJson, "Print one JSON object");
    command->footer("Example:\n  qormodel tree -L 2 -a project.model");
    command->callback([options, &session] { run(*options, session); });
}

}  // namespace qormodel
