#include "store/RegEncoding.h"
#include "store/RegFile.h"
#include "store/StoreText.h"

#include <QOR/Text.h>

#include <string_view>
#include <utility>

namespace qormodel {

namespace {
constexpr std::wstring_view version5 = L"Windows Registry Editor Version 5.00";
constexpr std::wstring_view version4 = L"REGEDIT4";
constexpr std::wstring_view blanks = L" \t\r";

int digitOf(wchar_t character) {
    if (character >= L'0' && character <= L'9') return character - L'0';
    if (character >= L'a' && character <= L'f') return character - L'a' + 10;
    if (character >= L'A' && character <= L'F') return character - L'A' + 10;
    return -1;
}

// Reads the characters of a file one by one and knows the line.
class RegReader {
public:
    explicit RegReader(const SourceFile& source) : source(source) { decode(); }

    std::vector<RegStep> read() {
        readHeader();
        while (!isAtEnd()) {
            readLine();
            endLine();
        }
        return std::move(steps);
    }

private:
    [[noreturn]] void fail(const std::string& expected) const { failAt(line, expected); }
    [[noreturn]] void failAt(std::uint64_t where, const std::string& expected) const {
        throw Failure(Place{source.getName(), where, {}}, expected);
    }

    [[noreturn]] void failAtHeader() const {
        fail("is no registry file: expected Windows Registry Editor Version 5.00 or REGEDIT4");
    }

    void decode() {
        if (!isRegFile(source)) failAtHeader();  // and not at a byte somewhere in it
        const std::string bytes = source.slice(0, source.getSize());
        if (bytes.starts_with("\xFF\xFE")) return decodeWide(std::string_view(bytes).substr(2));
        const bool isMarked = bytes.starts_with("\xEF\xBB\xBF");
        const std::string_view rest = std::string_view(bytes).substr(isMarked ? 3 : 0);
        if (rest.starts_with("REGEDIT4") && !isMarked) {
            text = fromCodePage(rest);
            return;
        }
        text = QOR::wide(std::string(rest));
        if (QOR::narrow(text, '?') != rest) failAtBadText(rest);
    }

    void decodeWide(std::string_view bytes) {
        text = joinPairs(keystore::dataToText(reinterpret_cast<const unsigned char*>(bytes.data()),
                                              bytes.size()));
        if (bytes.size() % 2 == 0) return;
        for (const wchar_t each : text) line += each == L'\n' ? 1 : 0;
        fail("the file ends within a character: expected two bytes for each");
    }

    [[noreturn]] void failAtBadText(std::string_view bytes) {
        const std::string back = QOR::narrow(text, '?');
        for (std::size_t i = 0; i < bytes.size() && i < back.size() && bytes[i] == back[i]; ++i)
            line += bytes[i] == '\n' ? 1 : 0;
        fail("there is a byte that is no UTF-8: expected UTF-8 or UTF-16 with a byte order mark");
    }

    bool isAtEnd() const { return at == text.size(); }
    wchar_t peek() const { return isAtEnd() ? L'\n' : text[at]; }
    bool take(wchar_t character) {
        if (isAtEnd() || text[at] != character) return false;
        ++at;
        return true;
    }
    bool takeWord(std::wstring_view word) {
        if (!std::wstring_view(text).substr(at).starts_with(word)) return false;
        at += word.size();
        return true;
    }
    void skipBlanks() {
        while (!isAtEnd() && blanks.find(text[at]) != std::wstring_view::npos) ++at;
    }

    void endLine() {
        skipBlanks();
        if (peek() == L';')
            while (peek() != L'\n') ++at;
        if (peek() != L'\n')
            failAt(textBegin != 0 ? std::exchange(textBegin, 0) : line,
                   "something follows that does not belong there: expected the end of the line");
        if (!isAtEnd()) ++at;
        ++line;
        textBegin = 0;
    }

    void readHeader() {
        skipBlanks();
        if (takeWord(version4)) form = RegForm::Version4;
        else if (!takeWord(version5)) failAtHeader();
        endLine();
    }

    void readLine() {
        skipBlanks();
        if (peek() == L'\n' || peek() == L';') return;
        if (take(L'[')) return readKey();
        if (peek() != L'"' && peek() != L'@')
            fail("expected a key in brackets, a value name in quotes, @ or a comment behind ;");
        readValue();
    }

    // The name of a key may hold brackets: the last one of the line ends it.
    void readKey() {
        const bool isRemoval = take(L'-');
        const std::size_t end = std::min(text.find(L'\n', at), text.size());
        const std::size_t close = text.substr(at, end - at).rfind(L']');
        if (close == std::wstring::npos) fail("the key has no end: expected ]");
        key = text.substr(at, close);
        at += close + 1;
        hasKey = !isRemoval;
        checkPath();
        steps.push_back(
            {isRemoval ? RegStep::Kind::RemoveKey : RegStep::Kind::MakeKey, line, key, {}, {}});
    }

    // A store would take the name up to there for all of it.
    void checkEnd(const std::wstring& name) const {
        if (name.find(L'\0') != std::wstring::npos)
            fail("there is a NUL within a name: expected characters that names can have");
    }

    void checkPath() const {
        checkEnd(key);
        if (key.empty() || key.starts_with(L'\\'))
            fail("expected the path of a key, with \\ between its names");
        for (std::size_t begin = 0; begin <= key.size();) {
            const std::size_t end = std::min(key.find(L'\\', begin), key.size());
            if (keystore::lengthOf(std::wstring_view(key).substr(begin, end - begin)) > 255)
                fail("the name of a key is too long: expected 255 characters at most");
            begin = end + 1;
        }
    }

    void readValue() {
        if (!hasKey)
            fail(steps.empty() ? "a value stands ahead of any key: expected a key in brackets"
                               : "a value stands behind a removed key: expected a key in brackets");
        RegStep step{RegStep::Kind::SetValue, line, key, {}, {}};
        if (!take(L'@')) {
            ++at;
            step.name = readQuoted(false);
            checkEnd(step.name);
        }
        skipBlanks();
        if (!take(L'=')) fail("expected = behind the name of the value");
        skipBlanks();
        if (take(L'-')) step.kind = RegStep::Kind::RemoveValue;
        else step.value = readData();
        steps.push_back(std::move(step));
    }

    StoredValue readData() {
        if (take(L'"')) return textValue(readQuoted(true));
        if (takeWord(L"dword:")) return readDword();
        if (takeWord(L"hex:")) return {keystore::TypeBinary, readBytes()};
        if (takeWord(L"hex(")) return readTyped();
        fail("expected a text in quotes, dword:, hex:, hex(TYPE): or -");
    }

    // Behind the opening quote. The editor writes a text of several lines as it is.
    std::wstring readQuoted(bool mayHaveLines) {
        const std::uint64_t begin = line;
        std::wstring quoted;
        while (!take(L'"')) {
            if (isAtEnd() || (peek() == L'\n' && !mayHaveLines))
                failAt(begin, "the text in quotes has no end: expected \"");
            if (peek() == L'\n') ++line;
            quoted += peek() == L'\\' ? readEscape() : text[at];
            ++at;
        }
        if (line != begin) textBegin = begin;
        return quoted;
    }

    // Leaves the last character of the sequence to be passed.
    wchar_t readEscape() {
        ++at;
        switch (peek()) {
            case L'\\': return L'\\';
            case L'"': return L'"';
            case L'n': return L'\n';
            case L'r': return L'\r';
            default: fail("a backslash begins nothing known: expected \\\\, \\\", \\n or \\r");
        }
    }

    StoredValue readDword() {
        std::uint64_t number = 0;
        int numDigits = 0;
        for (; digitOf(peek()) >= 0; ++at, ++numDigits)
            number = number << 4 | static_cast<std::uint64_t>(digitOf(peek()));
        if (numDigits == 0 || numDigits > 8)
            fail("expected one to eight hexadecimal digits behind dword:");
        return numberValue(number, TypeDword, 4);
    }

    StoredValue readTyped() {
        std::uint64_t type = 0;
        int numDigits = 0;
        for (; digitOf(peek()) >= 0; ++at, ++numDigits)
            type = type << 4 | static_cast<std::uint64_t>(digitOf(peek()));
        if (numDigits == 0 || numDigits > 8 || !takeWord(L"):"))
            fail("expected the type in hexadecimal digits and ): behind hex(");
        StoredValue value{static_cast<unsigned long>(type), readBytes()};
        const bool isText = type == keystore::TypeText || type == keystore::TypeExpandText ||
                            type == keystore::TypeMultiText;
        if (isText && form == RegForm::Version4)
            value.data = keystore::textToData(fromCodePage(
                {reinterpret_cast<const char*>(value.data.data()), value.data.size()}));
        return value;
    }

    std::vector<unsigned char> readBytes() {
        std::vector<unsigned char> bytes;
        skipBreak();
        while (digitOf(peek()) >= 0) {
            int byte = digitOf(text[at++]);
            if (digitOf(peek()) >= 0) byte = byte << 4 | digitOf(text[at++]);
            bytes.push_back(static_cast<unsigned char>(byte));
            skipBreak();
            if (!take(L',')) break;
            skipBreak();
            if (digitOf(peek()) < 0) fail("expected two hexadecimal digits behind the comma");
        }
        if (peek() != L'\n' && peek() != L';')
            fail("expected two hexadecimal digits for each byte, with commas between them");
        return bytes;
    }

    // A backslash at the end of a line: the bytes go on in the next one.
    void skipBreak() {
        skipBlanks();
        while (take(L'\\')) {
            skipBlanks();
            if (peek() != L'\n' || isAtEnd())
                fail("expected the end of the line behind the backslash, and more bytes below");
            ++at;
            ++line;
            skipBlanks();
        }
    }

    const SourceFile& source;
    std::wstring text;
    std::size_t at = 0;
    std::uint64_t line = 1;
    std::uint64_t textBegin = 0;  // where a text of several lines begins that ends in this line
    RegForm form = RegForm::Version5;
    std::wstring key;
    bool hasKey = false;
    std::vector<RegStep> steps;
};
}  // namespace

bool isRegFile(const SourceFile& source) {
    std::string head = source.slice(0, std::min<std::uint64_t>(source.getSize(), 160));
    if (head.starts_with("\xFF\xFE"))
        head = nameText(keystore::dataToText(
            reinterpret_cast<const unsigned char*>(head.data()) + 2, head.size() - 2));
    else if (head.starts_with("\xEF\xBB\xBF")) head.erase(0, 3);
    head.erase(0, std::min(head.size(), head.find_first_not_of(" \t\r")));
    return head.starts_with("REGEDIT4") || head.starts_with("Windows Registry Editor");
}

std::vector<RegStep> readRegFile(const SourceFile& source) { return RegReader(source).read(); }

}  // namespace qormodel
