// The smallest host of the key store in a file: stores a value and reads it back.

#include <QOR/KeyStoreSqlite.h>

#include <iostream>

int main(int argc, char** argv) {
    using namespace QOR::keystore;
    std::string error;
    const auto store = openSqliteStore(argc > 1 ? argv[1] : "store.db", &error);
    if (!store) {
        std::cout << error << '\n';
        return 1;
    }
    const unsigned char stored = 42;
    unsigned char found = 0;
    unsigned long size = 1;
    if (RegSetValueExW(store->root(), L"Answer", 0, TypeBinary, &stored, 1) != Success) return 1;
    if (RegQueryValueExW(store->root(), L"Answer", nullptr, nullptr, &found, &size) != Success)
        return 1;
    std::cout << "stored and found " << int(found) << '\n';
    return found == stored ? 0 : 1;
}
