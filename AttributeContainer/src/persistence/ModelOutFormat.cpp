#include <AttributeContainer/ModelOutFormat.h>

#include <AttributeContainer/DataOutFormat.h>
#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/Version.h>
#include <QOR/Text.h>

#include <ostream>

namespace QOR::AttributeContainer {

namespace {

// The digits that numbers have where their codec asks for no more.
constexpr std::streamsize standingPrecision = 8;

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

}  // namespace

ModelOutFormat& ModelOutFormat::startBlock(std::string_view name) {
    if (format == ModelFormat::Text) {
        stream << std::endl << name << ' ' << ModelFormat::START_OF_BLOCK_STR << ' ';
        return *this;
    }
    stream << '<' << name << '>' << std::endl;
    openBlocks.emplace_back(name);
    return *this;
}

ModelOutFormat& ModelOutFormat::startBlock(std::string_view name, std::string_view attributes) {
    if (format == ModelFormat::Text) return *this;
    stream << '<' << name << ' ' << attributes << '>';
    if (format == ModelFormat::XmlV2) stream << std::endl;
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
    stream << "<Attr type=\"" << type << "\">" << std::endl;
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
    if (format == ModelFormat::Text) {
        stream << std::endl << ModelFormat::END_OF_BLOCK_STR;
        return *this;
    }
    if (openBlocks.empty()) return *this;
    stream << "</" << openBlocks.back() << '>' << std::endl;
    openBlocks.pop_back();
    return *this;
}

ModelOutFormat& ModelOutFormat::startValue(std::string_view name) {
    if (format == ModelFormat::Text) {
        stream << std::endl << name << ' ';
        return *this;
    }
    stream << '<' << name << " value=\"";
    return *this;
}

ModelOutFormat& ModelOutFormat::startValue(std::string_view name, std::string_view attributes) {
    if (format == ModelFormat::Text) return *this;
    stream << '<' << name << ' ' << attributes << " value=\"";
    return *this;
}

ModelOutFormat& ModelOutFormat::startValueAsString(const std::string& name) {
    if (format != ModelFormat::Text) return startValue(name);
    stream.precision(standingPrecision);
    stream << std::endl;
    DataOutFormat<std::string>(stream, format).put(name);
    stream << ' ';
    return *this;
}

ModelOutFormat& ModelOutFormat::endValue() {
    if (format != ModelFormat::Text) stream << "\" />" << std::endl;
    return *this;
}

ModelOutFormat& ModelOutFormat::writeHeader(const std::string& text) {
    stream.precision(standingPrecision);
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
    stream.precision(standingPrecision);
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
