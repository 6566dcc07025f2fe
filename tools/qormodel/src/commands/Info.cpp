#include "commands/Commands.h"

#include "model/Document.h"
#include "model/Elements.h"
#include "model/Values.h"
#include "model/XmlForm.h"
#include "terminal/JsonOutput.h"

#include <AttributeContainer/Version.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace qormodel {

namespace {
using Colour = Output::Colour;

struct Options {
    std::vector<std::string> files;
    bool asJson = false;
};

struct Counts {
    std::map<std::string, std::uint64_t> classes;
    std::uint64_t numObjects = 0;
    std::uint64_t numFields = 0;
    std::uint64_t numAttributes = 0;
    std::uint64_t numPoints = 0;
    std::uint64_t numUnknown = 0;
    std::uint64_t numRelations = 0;
};

Counts countIn(const Document& document) {
    Counts counts;
    forEachElement(document.root, [&](const Element& element) {
        ++counts.classes[classOf(*element.container)];
        ++(element.isField ? counts.numFields : counts.numObjects);
        counts.numUnknown += isUnknownClass(*element.container) ? 1 : 0;
        // What else is told of the same points, such as their normals, counts no second time.
        std::uint64_t longest = 0;
        forEachAttribute(*element.container, [&](const auto& attribute) {
            ++counts.numAttributes;
            longest = std::max(longest, numPoints(*attribute).value_or(0));
        });
        counts.numPoints += longest;
        return true;
    });
    for (const auto& element : document.outline.elements) {
        counts.numRelations += element.relations.size();
        counts.numUnknown += element.strays.size();
        for (const auto& attribute : element.attributes)
            counts.numRelations += attribute.relations.size();
    }
    return counts;
}

std::string ourVersion() {
    return ac::version.getFormatVersion()->getReleaseNumbers();
}

// A version and how it stands to ours.
std::string versionText(const std::string& version) {
    if (version.empty()) return "not told";
    const std::string relation = isNewerThanLibrary(version) ? "newer than ours, "
                                 : version == ourVersion()   ? "the same as ours, "
                                                             : "older than ours, ";
    return version + " (" + relation + ourVersion() + ')';
}

Json describeFile(const Document& document, const Counts& counts) {
    return {{"file", document.file},
            {"form", "text"},
            {"title", document.outline.title},
            {"formatVersion", document.outline.versions.front()},
            {"ourFormatVersion", ourVersion()},
            {"isNewer", document.isNewerThanLibrary()},
            {"bytes", document.source->getSize()},
            {"objects", counts.numObjects},
            {"fields", counts.numFields},
            {"attributes", counts.numAttributes},
            {"points", counts.numPoints},
            {"unknown", counts.numUnknown},
            {"relations", counts.numRelations},
            {"classes", counts.classes}};
}

void printFile(Output& output, const Document& document, const Counts& counts) {
    output.print("{}\n", output.in(Colour::Strong, document.file));
    output.print("  form        text, \"{}\"\n", document.outline.title);
    output.print("  version     {}\n", versionText(document.outline.versions.front()));
    output.print("  size        {} bytes\n", document.source->getSize());
    output.print("  objects     {}\n  fields      {}\n  attributes  {}\n", counts.numObjects,
                 counts.numFields, counts.numAttributes);
    output.print("  points      {}\n  unknown     {}\n  relations   {}\n", counts.numPoints,
                 counts.numUnknown, counts.numRelations);
    output.print("  classes\n");
    for (const auto& [name, count] : counts.classes) output.print("    {:>8}  {}\n", count, name);
}

// Nothing reads these forms back, so there is nothing to count.
void tellXmlFile(const std::string& file, const SourceFile& source, const XmlForm& form,
                 const Options& options, Session& session, Json& files) {
    if (options.asJson) {
        files.push_back({{"file", file},
                         {"form", form.isExport ? "export" : "xml"},
                         {"title", form.title},
                         {"formatVersion", form.version},
                         {"ourFormatVersion", ourVersion()},
                         {"isNewer", isNewerThanLibrary(form.version)},
                         {"bytes", source.getSize()}});
        return;
    }
    const std::string title = form.title.empty() ? "" : ", \"" + form.title + '"';
    session.output.print("{}\n", session.output.in(Colour::Strong, file));
    session.output.print("  form        {}{}\n", form.isExport ? "XML export" : "XML", title);
    session.output.print("  version     {}\n", versionText(form.version));
    session.output.print("  size        {} bytes\n", source.getSize());
}

void tellFile(const std::string& file, const Options& options, Session& session, Json& files) {
    auto source = std::make_unique<SourceFile>(file);
    if (const auto form = inqXmlForm(*source))
        return tellXmlFile(file, *source, *form, options, session, files);
    const Document document = loadDocument(file, std::move(source));
    const Counts counts = countIn(document);
    for (const auto& warning : document.warnings)
        printNote(describe(warning.place, warning.text));
    if (options.asJson) {
        files.push_back(describeFile(document, counts));
    } else {
        printFile(session.output, document, counts);
    }
}

void run(const Options& options, Session& session) {
    Json files = Json::array();
    for (const auto& file : options.files) tellFile(file, options, session, files);
    if (options.asJson) printJson(session.output, "info", {{"files", std::move(files)}});
}
}  // namespace

void addInfo(CLI::App& program, Session& session) {
    auto* const command =
        program.add_subcommand("info", "Tell form, versions, counts and size of model files");
    const auto options = std::make_shared<Options>();
    command->add_option("FILE", options->files, "Model files, - for the standard input")
        ->required();
    command->add_flag("--json", options->asJson, "Print one JSON object");
    command->footer("Example:\n  qormodel info project.model");
    command->callback([options, &session] { run(*options, session); });
}

}  // namespace qormodel
