#include <AttributeContainer/VersionNum.h>

#include <AttributeContainer/Version.h>

#include <istream>
#include <tuple>

namespace QOR::AttributeContainer {

namespace {

// The point between two numbers. What stands in its place is put back, but for white space before
// it.
bool takePoint(std::istream& stream) {
    char character = 0;
    if (!(stream >> character)) return false;
    if (character == '.') return true;
    stream.putback(character);
    return false;
}

bool takePoint(std::string& text) {
    const auto sizeBefore = text.size();
    char character = 0;
    text >> character;
    if (text.size() == sizeBefore) return false;
    if (character == '.') return true;
    text.insert(text.begin(), character);
    return false;
}

// The same for a point with no white space before it; anything else stays.
bool takePointAtOnce(std::istream& stream) {
    if (stream.eof() || stream.peek() != '.') return false;
    stream.get();
    return true;
}

bool takePointAtOnce(std::string& text) {
    if (text.empty() || text.front() != '.') return false;
    text.erase(0, 1);
    return true;
}

bool isMark(int patch) { return patch == 1000 || patch == 100; }

}  // namespace

VersionNum::VersionNum() : VersionNum(Version::theRecord().copyOf(&Version::formatVersion)) {}

VersionNum::VersionNum(int majorNumber, int minorNumber, int patchNumber, int internalNumber,
                       int betaNumber, const std::string& revisionText)
    : VersionNum(Version::theRecord().copyOf(&Version::appVersion).getName(), majorNumber,
                 minorNumber, patchNumber, internalNumber, betaNumber, revisionText) {}

VersionNum::VersionNum(const std::string& nameText, int majorNumber, int minorNumber,
                       int patchNumber, int internalNumber, int betaNumber,
                       const std::string& revisionText)
    : name(nameText),
      major(majorNumber),
      minor(minorNumber),
      patch(patchNumber),
      internal(internalNumber),
      beta(betaNumber),
      revision(revisionText) {}

std::string VersionNum::getReleaseNumbers() const {
    auto text =
        getShortReleaseNumbers() + '.' + std::to_string(patch) + '.' + std::to_string(internal);
    if (beta != 0) text += '.' + std::to_string(beta);
    return text;
}

std::string VersionNum::getUIReleaseNumbers() const { return getReleaseNumbers(); }

std::string VersionNum::getShortReleaseNumbers() const {
    return std::to_string(major) + '.' + std::to_string(minor);
}

VersionNum VersionNum::maskMinorLevel() const { return VersionNum(name, major, 0, 0, 0, 0, ""); }

VersionNum VersionNum::maskPatchLevel() const {
    return VersionNum(name, major, minor, 0, 0, 0, "");
}

VersionNum VersionNum::maskInternalLevel() const {
    return VersionNum(name, major, minor, patch, 0, 0, "");
}

VersionNum VersionNum::maskBetaLevel() const {
    return VersionNum(name, major, minor, patch, internal, 0, "");
}

template <class Source> bool VersionNum::takeNumbers(Source& source) {
    for (int* const number : {&major, &minor, &patch}) {
        source >> *number;
        if (!takePoint(source)) return false;
    }
    source >> internal;
    beta = 0;
    if (takePointAtOnce(source)) source >> beta;
    return true;
}

bool VersionNum::setVersionNumbersFrom(std::istream& stream) { return takeNumbers(stream); }

bool VersionNum::setVersionNumbersFrom(std::string& text) { return takeNumbers(text); }

bool VersionNum::isVersionNumberNewer(VersionNum first, VersionNum second) {
    if (second.major != first.major) return second.major > first.major;
    if (second.minor != first.minor) return second.minor > first.minor;
    if (second.patch > first.patch && !isMark(second.patch)) return true;
    if (second.patch == first.patch) return second.internal > first.internal;
    if (first.patch == 1000) return true;
    return first.patch == 100 && !isMark(second.patch);
}

bool operator<(const VersionNum& a, const VersionNum& b) {
    return std::tie(a.major, a.minor, a.patch, a.internal) <
           std::tie(b.major, b.minor, b.patch, b.internal);
}

bool operator<=(const VersionNum& a, const VersionNum& b) { return !(b < a); }

std::string& operator>>(std::string& text, VersionNum& v) {
    v.setName("");
    v.setVersionNumbersFrom(text);
    return text;
}

std::string& operator<<(std::string& text, const VersionNum&) { return text; }

}  // namespace QOR::AttributeContainer
