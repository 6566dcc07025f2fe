#include "persistence/ValueReader.h"

#include <AttributeContainer/ModelFormat.h>
#include <QOR/Text.h>

#include <array>
#include <limits>

namespace QOR::AttributeContainer {

namespace {

constexpr int endOfInput = TextSource::endOfInput;

// A word that is one value. In the XML form the value ends at the quote of its attribute.
std::optional<std::string> readValueWord(TextSource& source) {
    if (source.getFormat() != ModelFormat::XmlV2) return source.readWord();
    std::string word = source.readAttributeWord();
    if (word.empty()) return std::nullopt;
    return word;
}

// Takes characters up to and with `last`.
void takeThrough(TextSource& source, char last) {
    int character = source.peek();
    while (character != endOfInput && character != last) character = source.next();
    source.take();
}

// Steps over a string of the XML form: a quoted one, or the name of an element in front of one.
// The text is not delivered in that form, which is for other tools to read.
bool passXmlString(TextSource& source) {
    const int first = source.peek();
    if (first != '\'' && first != '<') return false;
    source.drop();
    if (first == '\'') {
        takeThrough(source, '\'');
        return true;
    }
    takeThrough(source, ' ');
    int character = source.peek();
    while (character != endOfInput && character != '\'') character = source.next();
    return true;
}

void takeSign(TextSource& source) {
    source.skipWhiteSpace();
    source.take();
}

void getNumber(TextSource& source, double& number) { ValueReader<double>::get(source, number); }

void getPair(TextSource& source, SVec2d<double>& pair) {
    ValueReader<SVec2d<double>>::get(source, pair);
}

void getStatistics(TextSource& source, StatisticVal<double>& value) {
    getNumber(source, value.a);
    takeSign(source);
    getNumber(source, value.b);
    takeSign(source);
    getNumber(source, value.c);
    takeSign(source);
    getNumber(source, value.d);
}

// "Limits [p,q] [r,s]"
void getLimitsEx(TextSource& source, StatisticValLimits<double>& value) {
    source.readWord();
    takeSign(source);
    getPair(source, value.p);
    takeSign(source);
    getPair(source, value.q);
    takeSign(source);
    takeSign(source);
    getPair(source, value.r);
    takeSign(source);
    getPair(source, value.s);
    takeSign(source);
}

// "Limits [px,py] [rx ry]", the older form
void getLimits(TextSource& source, StatisticValLimits<double>& value) {
    source.readWord();
    takeSign(source);
    getNumber(source, value.p.x);
    takeSign(source);
    getNumber(source, value.p.y);
    value.q = value.p;
    takeSign(source);
    takeSign(source);
    getPair(source, value.r);
    value.s = value.r;
    takeSign(source);
}

}  // namespace

bool ValueReader<bool>::get(TextSource& source, bool& value) {
    const auto word = readValueWord(source);
    value = word && compareIgnoreCase(*word, "true") == 0;
    return word.has_value();
}

bool ValueReader<uuids::uuid>::get(TextSource& source, uuids::uuid& value) {
    const auto word = readValueWord(source);
    if (!word) return false;
    if (const auto parsed = uuids::uuid::parse(*word)) value = *parsed;
    return true;
}

bool ValueReader<std::string>::get(TextSource& source, std::string& value) {
    const int first = source.skipWhiteSpace();
    if (first == endOfInput) {
        source.fail();
        return false;
    }
    if (source.getFormat() == ModelFormat::XmlV2) return passXmlString(source);
    if (first != '"') return false;

    source.next();
    value = source.takeStringCharacters();
    bool isEscaped = false;
    int character = source.peek();
    if (character == '"') {  // as for nearly all: no backslash on the way
        source.drop();
        return true;
    }
    while (character != endOfInput && (character != '"' || isEscaped)) {
        isEscaped = character == '\\' && !isEscaped;
        value += static_cast<char>(character);
        character = source.next();
    }
    source.take();
    if (!value.empty()) escToControls(value, true);
    return true;
}

bool ValueReader<Time>::get(TextSource& source, Time& value) {
    int day = 0, month = 0, year = 0, hour = 0, minute = 0, second = 0;
    char sign = 0;
    const bool begins =
        getByStream(source, day, sign, month, sign, year, hour, sign, minute, sign, second);
    if (!source.getStream().fail()) value.setTime(year, month, day, hour, minute, second, 0);
    return begins;
}

bool ValueReader<VersionNum>::get(TextSource& source, VersionNum& value) {
    const bool isXml = source.getFormat() == ModelFormat::XmlV2;
    const int first = source.skipWhiteSpace();
    if (!isXml && first != '"') return false;
    constexpr std::streamsize commentStart = 4;  // "<!--"
    if (isXml) source.getStream().ignore(commentStart);
    std::string name;
    ValueReader<std::string>::get(source, name);
    value.setName(name);
    value.setVersionNumbersFrom(source.getStream());
    if (isXml) source.getStream().ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    return true;
}

bool ValueReader<Vec4d<unsigned char>>::get(TextSource& source, Vec4d<unsigned char>& value) {
    const bool any = source.skipWhiteSpace() != endOfInput;
    source.getStream() >> value.x >> value.y >> value.z >> value.w;
    return any;
}

bool ValueReader<ScanPtColor<Vec3d<float>>>::get(TextSource& source,
                                                 ScanPtColor<Vec3d<float>>& value) {
    std::array<int, 4> color{value.color[0], value.color[1], value.color[2], value.color[3]};
    auto& [x, y, z] = value.position;
    const bool begins = getByStream(source, x, y, z, color[0], color[1], color[2], color[3]);
    for (std::size_t i = 0; i < color.size(); ++i)
        value.color[i] = static_cast<std::uint8_t>(std::clamp(color[i], 0, 255));
    return begins;
}

bool ValueReader<StatisticVal<double>>::get(TextSource& source, StatisticVal<double>& value) {
    const auto word = source.readWord();
    getStatistics(source, value);
    return word.has_value();
}

bool ValueReader<StatisticValLimits<double>>::get(TextSource& source,
                                                  StatisticValLimits<double>& value) {
    value = {};
    const auto word = source.readWord();
    getStatistics(source, value);
    if (word == "StatisticValLimitsEx") getLimitsEx(source, value);
    else if (word == "StatisticValLimits") getLimits(source, value);
    return word.has_value();
}

}  // namespace QOR::AttributeContainer
