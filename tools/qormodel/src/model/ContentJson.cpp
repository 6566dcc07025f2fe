#include "model/ContentJson.h"

#include "model/Values.h"

#include <memory>
#include <vector>

namespace qormodel {

namespace {
std::string quoted(const std::string& text) {
    return Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
}
}  // namespace

ContentJson::ContentJson(std::streambuf& target, const std::string& command) : stream(&target) {
    stream << "{\n  \"version\": 1,\n  \"command\": " << quoted(command) << ",\n  \"files\": [";
}

void ContentJson::add(const Document& document, bool onlyMarked) {
    stream << (hasFiles ? "," : "") << "\n    {\n      \"file\": " << quoted(document.file)
           << ",\n      \"title\": " << quoted(document.outline.title)
           << ",\n      \"formatVersion\": " << quoted(document.outline.versions.front())
           << ",\n      \"elements\": [";
    hasFiles = true;
    hasElements = false;
    forEachElement(document.root, [&](const Element& element) {
        addElement(element, onlyMarked);
        return true;
    });
    stream << (hasElements ? "\n      ]" : "]") << "\n    }";
}

void ContentJson::finish() { stream << (hasFiles ? "\n  ]\n}\n" : "]\n}\n"); }

void ContentJson::addElement(const Element& element, bool onlyMarked) {
    std::vector<std::shared_ptr<ac::Attribute>> attributes;
    forEachAttribute(*element.container, [&](const auto& attribute) {
        if (!onlyMarked || attribute->isMarked()) attributes.push_back(attribute);
    });
    if (onlyMarked && attributes.empty()) return;
    stream << (hasElements ? "," : "") << "\n        {\"path\": " << quoted(element.path)
           << ", \"class\": " << quoted(classOf(*element.container))
           << ", \"kind\": " << (element.isField ? "\"field\"" : "\"object\"")
           << ", \"unknown\": " << (isUnknownClass(*element.container) ? "true" : "false")
           << ", \"attributes\": [";
    hasElements = true;
    const char* separator = "\n";
    for (const auto& attribute : attributes) {
        stream << separator << "          {\"name\": " << quoted(attribute->getName())
               << ", \"type\": " << quoted(attribute->getClassName()) << ", \"value\": ";
        writeValueJson(stream, *attribute);
        stream << '}';
        separator = ",\n";
    }
    stream << "]}";
}

}  // namespace qormodel
