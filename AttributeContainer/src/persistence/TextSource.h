// The characters of a stream, one by one, and the numbers and words that they make.
#pragma once

#include <QOR/Text.h>

#include <istream>
#include <optional>
#include <string>
#include <string_view>

namespace QOR::AttributeContainer {

/// Reads from a stream's buffer as the stream's own `peek` and `get` would, without their cost for
/// each character: what lies in the buffer's get area is read where it is. In the end the stream
/// stands behind what was taken, whatever buffer it has.
///
/// A stream that is not good gives nothing and keeps its state. Where the input ends the stream
/// gets its end bit, and where its buffer throws its bad bit; the exception goes on only if the
/// stream is to throw for that bit.
class TextSource {
public:
    static constexpr int endOfInput = std::istream::traits_type::eof();

    TextSource(std::istream& source, int sourceFormat);
    TextSource(const TextSource&) = delete;
    TextSource& operator=(const TextSource&) = delete;
    ~TextSource() { giveBack(); }

    /// The stream, standing behind what was taken until more is read from here.
    std::istream& getStream() {
        giveBack();
        return stream;
    }
    int getFormat() const { return format; }
    bool good() const { return stream.good(); }

    /// The next character, which stays where it is.
    int peek() {
        if (!stream.good()) return endOfInput;
        if (at == areaEnd) return peekInBuffer();
        return static_cast<unsigned char>(*at);
    }

    /// Drops the character that was seen last.
    void drop() {
        if (at == areaEnd) dropInBuffer();
        else ++at;
    }

    /// Drops the character that was seen last, and shows the one behind it.
    int next() {
        drop();
        return peek();
    }

    /// Skips white space and shows the character behind it.
    int skipWhiteSpace() {
        if (!stream.good()) return endOfInput;
        while (at != areaEnd && isWhiteSpace(*at)) ++at;
        if (at == areaEnd) return skipWhiteSpaceInBuffer();
        return static_cast<unsigned char>(*at);
    }

    /// Takes a character. Where there is none, the stream also gets its fail bit.
    int take();

    /// Ends a reading that went wrong: sets the stream's fail bit.
    void fail() { stream.setstate(std::ios::failbit); }

    /// Takes the characters behind white space that can stand in a number and converts them.
    /// \return false, with `number` as it was, if there is none.
    /// \throws std::invalid_argument with "Invalid number format" if they do not make a number.
    bool readNumber(double& number);

    /// Takes the same characters for an integer.
    /// \return the characters, valid until the next number is read; empty if there is none.
    std::string_view readDigits();

    /// Takes "#INF", in any case; leaves anything else where it is.
    bool takeInfinityMark();

    /// Takes the characters up to the next quote or backslash, or fewer.
    /// \return the characters, valid until more is read.
    std::string_view takeStringCharacters();

    /// Takes a word that ends at white space; without one the stream gets its fail bit.
    std::optional<std::string> readWord();

    /// Takes a word that stands in the quotes of an XML attribute: up to a blank or a double quote.
    std::string readAttributeWord();

private:
    int peekInBuffer();
    void dropInBuffer();
    int skipWhiteSpaceInBuffer();
    void openArea();
    void giveBack();
    int ended();
    int broken();
    bool readPlainDecimal(double& number);
    bool readPlainDecimalInBuffer(double& number);
    void collectNumberCharacters(int character);

    std::istream& stream;
    const int format;
    std::string token;  // kept, so that its storage is used again

    // What is left of the buffer's get area; the buffer is told of it before it is used itself.
    // Both are null while that is not known, and for a buffer that has no such area.
    const char* at = nullptr;
    const char* areaEnd = nullptr;
};

}  // namespace QOR::AttributeContainer
