#include "model/XmlForm.h"

#include <AttributeContainer/ModelFormat.h>

#include <sstream>
#include <string_view>

namespace qormodel {

using QOR::AttributeContainer::ModelFormat;

namespace {
constexpr std::uint64_t headSize = 1 << 16;  // no title is as long as that

// What stands in a comment; none where the line is no comment.
std::optional<std::string> commentIn(const std::string& line) {
    const std::string& begin = ModelFormat::XML_START_COMMENT;
    const std::string& end = ModelFormat::XML_END_COMMENT;
    if (line.size() < begin.size() + end.size() || !line.starts_with(begin) || !line.ends_with(end))
        return std::nullopt;
    return line.substr(begin.size(), line.size() - begin.size() - end.size());
}

// A title may stand in the quotes of either XML form.
std::string unquoted(const std::string& text) {
    const bool isQuoted = text.size() >= 2 && text.front() == text.back() &&
                          (text.front() == '\'' || text.front() == '"');
    return isQuoted ? text.substr(1, text.size() - 2) : text;
}

// A version stands behind its name.
std::string lastWord(const std::string& text) { return text.substr(text.rfind(' ') + 1); }

XmlForm readStreamHead(std::istream& head) {
    XmlForm form;
    std::string line;
    std::getline(head, line);
    form.title = unquoted(commentIn(line).value_or(""));
    if (std::getline(head, line) && line == ModelFormat::XML_NEXT_VERSION &&
        std::getline(head, line))
        form.version = lastWord(commentIn(line).value_or(""));
    return form;
}
}  // namespace

std::optional<XmlForm> inqXmlForm(const SourceFile& source) {
    std::istringstream head(source.slice(0, std::min(headSize, source.getSize())));
    std::string line;
    if (!std::getline(head, line) || line != ModelFormat::XML_HEADER) return std::nullopt;
    if (!std::getline(head, line)) return std::nullopt;
    if (line == ModelFormat::XML_V2_COMMENT) return readStreamHead(head);
    constexpr std::string_view exportRoot = "<Root version=\"";
    if (!line.starts_with(exportRoot)) return std::nullopt;
    XmlForm form;
    form.isExport = true;
    form.version =
        line.substr(exportRoot.size(), line.find('"', exportRoot.size()) - exportRoot.size());
    return form;
}

}  // namespace qormodel
