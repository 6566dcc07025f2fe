// An application keeps its settings in a key store: it starts, changes some, stores all, starts
// again and finds them whole.
//
//     settings [file]     on Windows: settings [key below HKEY_CURRENT_USER]
//
// With no argument it uses a place of its own and takes it away at its end.
#include "Settings.h"
#include "SettingsStore.h"
#include "WholeTextWriter.h"

#include <AttributeContainer/AttrRegistryVisitor.h>
#include <AttributeContainer/RegKeys.h>

#include <exception>
#include <iostream>
#include <limits>
#include <memory>
#include <string>

namespace {

using namespace settings;

constexpr auto allLevels = std::numeric_limits<unsigned>::max();

std::shared_ptr<RegKeys> keysOf(keystore::Store& store) {
    return std::make_shared<RegKeys>("Viewer\\Settings", store.root(), false);
}

// A store in memory or in the registry does without transactions.
bool isGood(keystore::Status status) {
    return status == keystore::Success || status == keystore::NotSupported;
}

bool store(Settings& values, keystore::Store& store) {
    // All of them or none.
    keystore::Transaction transaction(store);
    if (!isGood(transaction.status())) return false;
    WholeTextWriter writer(keysOf(store));
    values.attributeVisitor(writer, true);
    for (const auto& problem : writer.getProblems()) std::cout << "  " << problem << '\n';
    return isGood(transaction.commit());
}

int load(Settings& values, keystore::Store& store) {
    constexpr bool notify = false;  // nobody has seen the defaults yet
    AttrReadRegistry reader(keysOf(store), notify, 0, allLevels);
    values.attributeVisitor(reader, true);
    return reader.getNumRead();
}

// What the user does between a start and an end of the program.
bool runOnce(const std::string& place) {
    std::string error;
    const auto opened = openStore(place, error);
    if (!opened) {
        std::cout << error << '\n';
        return false;
    }
    const auto values = Settings::create();
    std::cout << "start: " << load(*values, *opened) << " settings found\n";
    values->NumStarts(values->NumStarts() + 1);
    values->Window().lock()->Position({40, 25});
    values->Window().lock()->Maximized(true);
    values->Window().lock()->Handle(4711);
    values->Scanning().lock()->Gain(7);
    values->Scanning().lock()->Operator("Zo\xc3\xab \xe2\x82\xac");
    values->Scanning().lock()->Comment(std::string(600, '.'));
    return store(*values, *opened);
}

bool check(bool condition, const char* what) {
    if (!condition) std::cout << "not as it was: " << what << '\n';
    return condition;
}

bool findWhole(const std::string& place) {
    std::string error;
    const auto opened = openStore(place, error);
    if (!opened) return check(false, error.c_str());
    const auto values = Settings::create();
    std::cout << "start: " << load(*values, *opened) << " settings found\n";
    const auto window = values->Window().lock();
    const auto scanning = values->Scanning().lock();

    bool isWhole = check(values->NumStarts() >= 1, "NumStarts");
    isWhole &= check(window->Position() == SVec2d<int>{40, 25}, "Position");
    isWhole &= check(window->Size() == SVec2d<int>{800, 600}, "Size");
    isWhole &= check(window->Maximized(), "Maximized");
    isWhole &= check(window->Handle() == 0, "Handle, which is not stored");
    isWhole &= check(scanning->Resolution() == 0.04, "Resolution");
    isWhole &= check(scanning->Gain() == 7, "Gain, a number of one digit");
    isWhole &= check(scanning->Operator() == "Zo\xc3\xab \xe2\x82\xac", "Operator");
    isWhole &= check(scanning->Comment().empty(), "Comment, which was too long");
    if (isWhole)
        std::cout << "all settings are as they were, after " << values->NumStarts() << " starts\n";
    return isWhole;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const std::string place = argc > 1 ? argv[1] : settings::temporaryPlace();
        std::cout << "settings in " << place << '\n';
        const bool isWhole = runOnce(place) && findWhole(place);
        if (argc <= 1) settings::removePlace(place);
        return isWhole ? 0 : 1;
    } catch (const std::exception& problem) {
        std::cout << problem.what() << '\n';
        return 1;
    }
}
