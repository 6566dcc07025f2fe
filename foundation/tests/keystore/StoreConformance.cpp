#include "StoreConformance.h"

namespace QOR::keystore::Testing {

Handle opened(HKEY root, const wchar_t* path, unsigned long access) {
    HKEY key = nullptr;
    const Status status = RegOpenKeyExW(root, path, 0, access, &key);
    return Handle(status == Success ? key : nullptr);
}

Handle created(HKEY root, const wchar_t* path, unsigned long access) {
    HKEY key = nullptr;
    const Status status =
        RegCreateKeyExW(root, path, 0, nullptr, 0, access, nullptr, &key, nullptr);
    return Handle(status == Success ? key : nullptr);
}

Status openStatus(HKEY root, const wchar_t* path, unsigned long access) {
    HKEY key = nullptr;
    const Status status = RegOpenKeyExW(root, path, 0, access, &key);
    if (status == Success) RegCloseKey(key);
    return status;
}

Status createStatus(HKEY root, const wchar_t* path) {
    HKEY key = nullptr;
    const Status status = RegCreateKeyW(root, path, &key);
    if (status == Success) RegCloseKey(key);
    return status;
}

Status setBytes(HKEY key, const wchar_t* name, const std::string& bytes, unsigned long type) {
    return RegSetValueExW(key, name, 0, type, reinterpret_cast<const unsigned char*>(bytes.data()),
                          static_cast<unsigned long>(bytes.size()));
}

Answer query(HKEY key, const wchar_t* name, std::size_t capacity) {
    std::string buffer(capacity + 1, '#');
    Answer answer{0, "", 0, static_cast<unsigned long>(capacity)};
    answer.status = RegQueryValueExW(key, name, nullptr, &answer.type,
                                     reinterpret_cast<unsigned char*>(buffer.data()), &answer.size);
    EXPECT_EQ(buffer[capacity], '#') << "written behind the buffer";
    buffer.pop_back();
    if (answer.status == Success) buffer.resize(answer.size);
    answer.bytes = buffer;
    return answer;
}

Names subkeysOf(HKEY key) {
    Names names;
    for (unsigned long i = 0;; ++i) {
        wchar_t name[300];
        unsigned long size = 300;
        FileTime time;
        const Status status = RegEnumKeyExW(key, i, name, &size, nullptr, nullptr, nullptr, &time);
        if (status != Success) {
            EXPECT_EQ(status, NoMoreItems);
            return names;
        }
        EXPECT_EQ(std::wstring(name).size(), size);
        EXPECT_TRUE(names.insert(name).second) << "given twice";
    }
}

Names valuesOf(HKEY key) {
    Names names;
    std::wstring name(20000, L'#');
    for (unsigned long i = 0;; ++i) {
        unsigned long size = 20000;
        const Status status =
            RegEnumValueW(key, i, name.data(), &size, nullptr, nullptr, nullptr, nullptr);
        if (status != Success) {
            EXPECT_EQ(status, NoMoreItems);
            return names;
        }
        EXPECT_EQ(name[size], L'\0');
        EXPECT_TRUE(names.insert(name.substr(0, size)).second) << "given twice";
    }
}

}  // namespace QOR::keystore::Testing
