#include "store/RegEncoding.h"
#include "store/RegFile.h"
#include "store/StoreText.h"

#include <QOR/Text.h>

#include <fmt/format.h>

#include <utility>

namespace qormodel {

namespace {
constexpr std::size_t lineWidth = 78;  // ahead of the backslash that continues a line

class RegWriter {
public:
    RegWriter(const StoreFile& store, RegForm form) : store(store), form(form) {}

    std::string write(const std::wstring& path, const std::wstring& base) {
        text = form == RegForm::Version5 ? L"Windows Registry Editor Version 5.00\r\n"
                                         : L"REGEDIT4\r\n";
        // The keys ahead of those below them, in the order of the store.
        std::vector<std::pair<std::wstring, std::wstring>> waiting{{path, base}};
        while (!waiting.empty()) {
            const auto [from, to] = std::move(waiting.back());
            waiting.pop_back();
            const auto key = StoreKey::inq(store, from);
            if (!key) throw store.failure(from, "is not there");
            addKey(*key, to);
            const auto subkeys = key->listSubkeys();
            for (auto name = subkeys.rbegin(); name != subkeys.rend(); ++name)
                waiting.emplace_back(keyBelow(from, *name), keyBelow(to, *name));
        }
        text += L"\r\n";
        return encode();
    }

private:
    void addKey(const StoreKey& key, const std::wstring& path) {
        if (path.find_first_of(L"\r\n") != std::wstring::npos)
            throw store.failure(key.getPath(),
                                "has a line break in its name, which a registry "
                                "file cannot hold");
        const auto values = key.listValues();
        if (path.empty()) {  // the root of a store, for which such a file has no name
            if (!values.empty())
                throw store.failure(values.front(),
                                    "stands in the root of the store, for which "
                                    "a registry file has no name: --base gives one");
            return;
        }
        text += L"\r\n[" + path + L"]\r\n";
        for (const auto& name : values)
            if (const auto value = key.inqValue(name)) addValue(key, name, *value);
    }

    void addValue(const StoreKey& key, const std::wstring& name, const StoredValue& value) {
        std::wstring line = name.empty() ? L"@=" : L'"' + escaped(name) + L"\"=";
        place = keyBelow(key.getPath(), name);
        if (isPlainText(value)) line += L'"' + escaped(*inqText(value)) + L'"';
        else if (value.type == TypeDword && value.data.size() == 4)
            line += QOR::wide(fmt::format("dword:{:08x}", *inqNumber(value)));
        else addBytes(line, value);
        text += line + L"\r\n";
    }

    // Whether the value is the one that a text in quotes stands for. Not all editors take line
    // breaks in quotes.
    static bool isPlainText(const StoredValue& value) {
        const auto found = value.type == keystore::TypeText ? inqText(value) : std::nullopt;
        return found && value.data == textValue(*found).data &&
               found->find_first_of(std::wstring_view(L"\0\r\n", 3)) == std::wstring::npos;
    }

    static std::wstring escaped(const std::wstring& plain) {
        std::wstring result;
        for (const wchar_t character : plain) {
            if (character == L'\\' || character == L'"') result += L'\\';
            if (character == L'\n') result += L"\\n";
            else if (character == L'\r') result += L"\\r";
            else result += character;
        }
        return result;
    }

    void addBytes(std::wstring& line, const StoredValue& value) {
        line += value.type == keystore::TypeBinary
                    ? L"hex:"
                    : QOR::wide(fmt::format("hex({:x}):", value.type));
        const auto bytes = bytesOf(value);
        std::size_t column = line.size();
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            const bool isLast = i + 1 == bytes.size();
            if (column + 3 > lineWidth) {
                line += L"\\\r\n  ";
                column = 2;
            }
            line += QOR::wide(fmt::format("{:02x}{}", bytes[i], isLast ? "" : ","));
            column += 3;
        }
    }

    // The older form has its texts in bytes, also where they stand as bytes.
    std::vector<unsigned char> bytesOf(const StoredValue& value) const {
        const bool isText = value.type == keystore::TypeText ||
                            value.type == keystore::TypeExpandText ||
                            value.type == keystore::TypeMultiText;
        if (!isText || form == RegForm::Version5) return value.data;
        const auto characters = keystore::dataToText(value.data.data(), value.data.size());
        const auto bytes = toCodePage(characters);
        if (!bytes || value.data.size() % 2 != 0) refuse();
        return {bytes->begin(), bytes->end()};
    }

    [[noreturn]] void refuse() const {
        throw store.failure(place,
                            "REGEDIT4 cannot hold it, which has the characters of code "
                            "page 1252 only; --as reg can");
    }

    std::string encode() const {
        if (form == RegForm::Version5) {
            const auto data = keystore::textToData(text);
            return "\xFF\xFE" + std::string(data.begin(), data.end());
        }
        const auto bytes = toCodePage(text);
        if (!bytes) throwFirstOutside();
        return *bytes;
    }

    [[noreturn]] void throwFirstOutside() const {
        std::size_t begin = 0;
        for (std::size_t end; (end = text.find(L"\r\n", begin)) != std::wstring::npos;
             begin = end + 2) {
            const auto line = text.substr(begin, end - begin);
            if (!toCodePage(line))
                throw Failure(Place{store.file}, nameText(line) +
                                                     ": REGEDIT4 cannot hold it, which has the "
                                                     "characters of code page 1252 only; --as "
                                                     "reg can");
        }
        throw Failure(Place{store.file}, "REGEDIT4 cannot hold it");
    }

    const StoreFile& store;
    RegForm form;
    std::wstring text;
    std::wstring place;  // of the value that is written
};
}  // namespace

std::string writeRegFile(const StoreFile& store, const std::wstring& path, const std::wstring& base,
                         RegForm form) {
    return RegWriter(store, form).write(path, base);
}

}  // namespace qormodel
