// How the start and the end of a stream are read, before and after its keywords.
#include <AttributeContainer/DataInFormat.h>
#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/ModelInFormat.h>
#include <AttributeContainer/VersionNum.h>
#include <QOR/Text.h>

#include <cstring>
#include <istream>
#include <limits>

namespace QOR::AttributeContainer {

namespace {

constexpr std::size_t maxTagLine = 100;  // characters

std::string takeLine(std::istream& stream) {
    std::string line;
    std::getline(stream, line);
    return line;
}

void skipLine(std::istream& stream) {
    stream.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
}

// The next line and the white space around it. A line that is too long for a tag is left after its
// first characters.
std::string takeTagLine(std::istream& stream) {
    eatWS(stream);
    std::string line;
    while (line.size() < maxTagLine) {
        if (stream.peek() == std::char_traits<char>::eof()) break;
        const auto character = static_cast<char>(stream.get());
        if (character == '\n') break;
        line += character;
    }
    eatWS(stream);
    return line;
}

}  // namespace

int ModelInFormat::determineFormat() {
    format = ModelFormat::Text;
    eatWS(stream);
    if (stream.peek() != '<') return format;
    if (takeLine(stream) != ModelFormat::XML_HEADER) return format;
    if (takeLine(stream) != ModelFormat::XML_V2_COMMENT) return format;
    format = ModelFormat::XmlV2;
    return format;
}

void ModelInFormat::readHeader(std::string& text) {
    if (format != ModelFormat::XmlV2) {
        text = DataInFormat<std::string>(stream, format).get();
        return;
    }
    eatWS(stream);
    stream.ignore(std::strlen("<!--"));
    text = DataInFormat<std::string>(stream, format).get();
    skipLine(stream);
    if (takeLine(stream) == ModelFormat::XML_NEXT_ROOT) skipLine(stream);
}

void ModelInFormat::readVersion(VersionNum& v) {
    v = DataInFormat<VersionNum>(stream, format).get();
}

void ModelInFormat::readRootModelVersion(VersionNum& v) {
    if (format == ModelFormat::Text) readVersion(v);
    // Models carry no version of their root that anyone may rely on: what old writers stored there
    // passes, and callers get the neutral version.
    if (v.getName() != "1.0") v = VersionNum("1.0", 0, 0, 0, 0, 0, "");
}

bool ModelInFormat::readZelkStart() {
    if (format != ModelFormat::XmlV2) return true;
    return compareIgnoreCase(takeTagLine(stream), ModelFormat::XML_ROOT_START_TAG) == 0;
}

bool ModelInFormat::readZelkEnd() {
    if (format == ModelFormat::XmlV2) takeTagLine(stream);
    return true;
}

}  // namespace QOR::AttributeContainer
