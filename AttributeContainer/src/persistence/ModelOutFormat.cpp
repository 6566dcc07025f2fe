#include <AttributeContainer/ModelOutFormat.h>

#include <AttributeContainer/DataOutFormat.h>
#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/Version.h>
#include <QOR/Text.h>

#include "persistence/StreamText.h"
#include "persistence/TextLines.h"

#include <ostream>

namespace QOR::AttributeContainer {

namespace {

// Between the name of an element and the value in it.
constexpr std::string_view valueStart = " value=\"";

// The entity of a character that may not stand in XML text; empty for all others.
std::string_view entityOf(char character) {
    switch (character) {
        case '"': return "&quot;";
        case '&': return "&amp;";
        case '\'': return "&apos;";
        case '<': return "&lt;";
        case '>': return "&gt;";
        default: return {};
    }
}

void putBrace(StreamText& text) {
    text.character(' ');
    text.text(ModelFormat::START_OF_BLOCK_STR);
    text.character(' ');
}

void putTagStart(StreamText& text, std::string_view name, std::string_view attributes) {
    text.character('<');
    text.text(name);
    text.character(' ');
    text.text(attributes);
}

}  // namespace

void TextLines::startAttribute(std::ostream& stream, const std::string& className,
                               const std::string& name) {
    stream.precision(StreamText::standingPrecision);
    StreamText text(stream, ModelFormat::Text);
    text.endLine();
    text.text(className);
    putBrace(text);
    text.endLine();
    text.text("Name");
    text.character(' ');
    text.string(name);
    text.finish();
}

ModelOutFormat& ModelOutFormat::startBlock(std::string_view name) {
    StreamText text(stream, format);
    if (format == ModelFormat::Text) {
        text.endLine();
        text.text(name);
        putBrace(text);
        text.finish();
        return *this;
    }
    text.character('<');
    text.text(name);
    text.character('>');
    text.endLine();
    openBlocks.emplace_back(name);
    return *this;
}

ModelOutFormat& ModelOutFormat::startBlock(std::string_view name, std::string_view attributes) {
    if (format == ModelFormat::Text) return *this;
    StreamText text(stream, format);
    putTagStart(text, name, attributes);
    text.character('>');
    if (format == ModelFormat::XmlV2) text.endLine();
    text.finish();
    openBlocks.emplace_back(name);
    return *this;
}

ModelOutFormat& ModelOutFormat::startAttributeBlock(const std::string& attrClassName) {
    if (format == ModelFormat::Text) return startBlock(attrClassName);
    const int first = findLastOf(attrClassName, "<");
    const int last = findLastOf(attrClassName, ">");
    // One character more than stands between the brackets: streams out there have the closing one
    // in the type, and it must stay. A negative count reaches to the end of the name.
    const auto type = attrClassName.substr(static_cast<std::size_t>(first + 1),
                                           static_cast<std::size_t>(last - first));
    StreamText text(stream, format);
    text.text("<Attr type=\"");
    text.text(type);
    text.text("\">");
    text.endLine();
    openBlocks.emplace_back("Attr");
    return *this;
}

ModelOutFormat& ModelOutFormat::startBlockWithSize(std::string_view name, std::uint64_t size,
                                                   bool sizeInName) {
    if (format == ModelFormat::Text) {
        if (!sizeInName) {
            startBlock(name).stream << ' ' << size;
            return *this;
        }
        stream << std::endl << name << ' ' << size << ' ' << ModelFormat::START_OF_BLOCK_STR << ' ';
        return *this;
    }
    stream << '<' << name << " value=\"" << size << "\">" << std::endl;
    openBlocks.emplace_back(name);
    return *this;
}

ModelOutFormat& ModelOutFormat::endBlock() {
    StreamText text(stream, format);
    if (format == ModelFormat::Text) {
        text.endLine();
        text.text(ModelFormat::END_OF_BLOCK_STR);
        text.finish();
        return *this;
    }
    if (openBlocks.empty()) return *this;
    text.text("</");
    text.text(openBlocks.back());
    text.character('>');
    text.endLine();
    openBlocks.pop_back();
    return *this;
}

ModelOutFormat& ModelOutFormat::startValue(std::string_view name) {
    StreamText text(stream, format);
    if (format == ModelFormat::Text) {
        text.endLine();
        text.text(name);
        text.character(' ');
    } else {
        text.character('<');
        text.text(name);
        text.text(valueStart);
    }
    text.finish();
    return *this;
}

ModelOutFormat& ModelOutFormat::startValue(std::string_view name, std::string_view attributes) {
    if (format == ModelFormat::Text) return *this;
    StreamText text(stream, format);
    putTagStart(text, name, attributes);
    text.text(valueStart);
    text.finish();
    return *this;
}

ModelOutFormat& ModelOutFormat::startValueAsString(const std::string& name) {
    if (format != ModelFormat::Text) return startValue(name);
    stream.precision(StreamText::standingPrecision);
    StreamText text(stream, format);
    text.endLine();
    text.string(name);
    text.character(' ');
    text.finish();
    return *this;
}

ModelOutFormat& ModelOutFormat::endValue() {
    if (format == ModelFormat::Text) return *this;
    StreamText text(stream, format);
    text.text("\" />");
    text.endLine();
    return *this;
}

ModelOutFormat& ModelOutFormat::writeHeader(const std::string& text) {
    stream.precision(StreamText::standingPrecision);
    DataOutFormat<std::string> string(stream, format);
    if (format == ModelFormat::Text) {
        string.put(text);
        stream << std::endl;
        return *this;
    }
    stream << ModelFormat::XML_HEADER << std::endl;
    stream << ModelFormat::XML_V2_COMMENT << std::endl;
    stream << ModelFormat::XML_START_COMMENT;
    string.put(text);
    stream << ModelFormat::XML_END_COMMENT << std::endl;
    stream << ModelFormat::XML_NEXT_ROOT << std::endl;
    stream << ModelFormat::XML_ROOT_START_TAG << std::endl;
    return *this;
}

ModelOutFormat& ModelOutFormat::writeHeader(const std::string& text, const Version& versions,
                                            bool writeRootModelVersion) {
    stream.precision(StreamText::standingPrecision);
    DataOutFormat<std::string> string(stream, format);
    DataOutFormat<VersionNum> versionNum(stream, format);
    if (format == ModelFormat::Text) {
        string.put(text);
        stream << std::endl;
        versionNum.put(*versions.getFormatVersion());
        if (!writeRootModelVersion) return *this;
        stream << std::endl;
        versionNum.put(*versions.getRootModelVersion());
        return *this;
    }
    stream << ModelFormat::XML_HEADER << std::endl;
    stream << ModelFormat::XML_V2_COMMENT << std::endl;
    stream << ModelFormat::XML_START_COMMENT;
    string.put(text);
    stream << ModelFormat::XML_END_COMMENT << std::endl;
    stream << ModelFormat::XML_NEXT_VERSION << std::endl;
    stream << ModelFormat::XML_START_COMMENT;
    versionNum.put(*versions.getFormatVersion());
    stream << ModelFormat::XML_END_COMMENT << std::endl;
    stream << ModelFormat::XML_ROOT_START_TAG << std::endl;
    return *this;
}

ModelOutFormat& ModelOutFormat::writeFooter() {
    if (format != ModelFormat::Text) stream << ModelFormat::XML_FOOTER;
    return *this;
}

void ModelOutFormat::encodeXMLEntities(std::ostream& stream, std::string_view text) {
    const auto write = [&](std::string_view part) {
        stream.write(part.data(), static_cast<std::streamsize>(part.size()));
    };
    std::size_t written = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto entity = entityOf(text[i]);
        if (entity.empty()) continue;
        write(text.substr(written, i - written));
        write(entity);
        written = i + 1;
    }
    write(text.substr(written));
}

}  // namespace QOR::AttributeContainer
