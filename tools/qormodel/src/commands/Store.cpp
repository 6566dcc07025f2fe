#include "commands/StoreOptions.h"

#include "store/StoreText.h"
#include "terminal/JsonOutput.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace qormodel {

namespace {
using Colour = Output::Colour;
using Group = std::shared_ptr<StoreOptions>;

constexpr const char* defaultName = "@";  // how the default value of a key is named

std::string shownName(const std::wstring& name) {
    return name.empty() ? defaultName : onOneLine(nameText(name));
}

std::wstring valueName(const std::string& text) {
    return text == defaultName ? std::wstring() : storeName(text);
}

StoreKey keyAt(const StoreFile& store, const std::wstring& path) {
    auto key = StoreKey::inq(store, path);
    if (!key) throw store.failure(path, "is not there");
    return std::move(*key);
}

Json jsonOf(const std::wstring& key, const std::wstring& name, const StoredValue& value) {
    return {{"key", nameText(key)},
            {"name", nameText(name)},
            {"type", typeWordOf(value.type)},
            {"value", valueJson(value)}};
}

// ls ----------------------------------------------------------------------------------------------

struct ListOptions {
    std::string key;
    bool isRecursive = false;
    bool asJson = false;
};

class Listing {
public:
    Listing(const StoreFile& store, const ListOptions& options, Output& output)
        : store(store), options(options), output(output) {}

    void run() {
        const std::wstring start = keyPath(options.key);
        keyAt(store, start);
        std::vector<std::pair<std::wstring, std::wstring>> waiting{{start, {}}};
        while (!waiting.empty()) {
            const auto [path, shown] = std::move(waiting.back());
            waiting.pop_back();
            if (const auto key = StoreKey::inq(store, path)) list(*key, shown, waiting);
        }
        if (options.asJson) printJson(output, "store ls", {{"keys", keys}, {"values", values}});
    }

private:
    void list(const StoreKey& key, const std::wstring& shown,
              std::vector<std::pair<std::wstring, std::wstring>>& waiting) {
        if (!shown.empty()) addKey(key.getPath(), shown);
        for (const auto& name : key.listValues())
            if (const auto value = key.inqValue(name)) addValue(key.getPath(), shown, name, *value);
        const auto subkeys = key.listSubkeys();
        if (!options.isRecursive) {
            for (const auto& name : subkeys) addKey(keyBelow(key.getPath(), name), name);
            return;
        }
        for (auto name = subkeys.rbegin(); name != subkeys.rend(); ++name)
            waiting.emplace_back(keyBelow(key.getPath(), *name), keyBelow(shown, *name));
    }

    void addKey(const std::wstring& path, const std::wstring& shown) {
        if (options.asJson) return keys.push_back(nameText(path));
        output.print("{}\n", output.in(Colour::Strong, shownName(shown) + '\\'));
    }

    void addValue(const std::wstring& path, const std::wstring& shown, const std::wstring& name,
                  const StoredValue& value) {
        if (options.asJson) return values.push_back(jsonOf(path, name, value));
        const std::string holder = shown.empty() ? "" : shownName(shown) + '\\';
        output.print("{}{} = {} {}\n", holder, shownName(name), shortText(value),
                     output.in(Colour::Faint, typeWordOf(value.type)));
    }

    const StoreFile& store;
    const ListOptions& options;
    Output& output;
    Json keys = Json::array();
    Json values = Json::array();
};

void addList(CLI::App& group, const Group& store, Session& session) {
    auto* const command = group.add_subcommand("ls", "List the keys and values of a key");
    const auto options = std::make_shared<ListOptions>();
    command->add_option("KEY", options->key,
                        "Path of a key, as in 'Viewer\\Window'; else the root");
    command->add_flag("-r,--recursive", options->isRecursive, "All below it too");
    command->add_flag("--json", options->asJson, "Print one JSON object");
    command->footer("Example:\n  qormodel store --store settings.db ls -r Viewer");
    command->callback([options, store, &session] {
        Listing(StoreFile(store->file, WhenMissing::FailForReading), *options, session.output)
            .run();
    });
}

// get ---------------------------------------------------------------------------------------------

struct GetOptions {
    std::string key;
    std::optional<std::string> value;
    bool isValueExpected = false;
    bool asJson = false;
};

void get(const StoreFile& store, const GetOptions& options, Session& session) {
    const std::wstring path = keyPath(options.key);
    const auto key = StoreKey::inq(store, path);
    Json found = Json::array();
    const auto tellMissing = [&](const std::wstring& missing) {
        printNote(describe(Place{store.file, 0, nameText(missing)}, "is not there"));
        if (options.isValueExpected) session.exit = Exit::Found;
    };
    const auto add = [&](const std::wstring& name, bool withName) {
        const auto value = key->inqValue(name);
        if (!value) return tellMissing(keyBelow(path, name));
        if (options.asJson) found.push_back(jsonOf(path, name, *value));
        else if (withName) session.output.print("{} = {}\n", shownName(name), valueText(*value));
        else session.output.print("{}\n", valueText(*value));
    };
    if (!key) {
        tellMissing(path);
    } else if (options.value) {
        add(valueName(*options.value), false);
    } else {
        for (const auto& name : key->listValues()) add(name, true);
    }
    if (options.asJson) printJson(session.output, "store get", {{"values", std::move(found)}});
}

void addGet(CLI::App& group, const Group& store, Session& session) {
    auto* const command = group.add_subcommand("get", "Print values, whole");
    const auto options = std::make_shared<GetOptions>();
    command->add_option("KEY", options->key, "Path of a key")->required();
    command->add_option("VALUE", options->value,
                        "Name of a value, @ for the default value; else all of the key");
    command->add_flag("-e,--exit-status", options->isValueExpected,
                      "Exit with 1 where there is no value");
    command->add_flag("--json", options->asJson, "Print one JSON object");
    command->footer("Example:\n  qormodel store --store settings.db get 'Viewer\\Window' Position");
    command->callback([options, store, &session] {
        get(StoreFile(store->file, WhenMissing::FailForReading), *options, session);
    });
}

// set ---------------------------------------------------------------------------------------------

struct SetOptions {
    std::string key;
    std::vector<std::string> assignments;
    std::optional<std::string> name;
    std::string type;
};

struct Assignment {
    std::wstring name;
    std::string text;
};

std::vector<Assignment> assignmentsOf(const SetOptions& options) {
    std::vector<Assignment> assignments;
    if (options.name && options.assignments.size() != 1)
        throw Failure("--name is for one value: expected one text");
    for (const auto& each : options.assignments) {
        const auto sign = each.find('=');
        if (options.name) assignments.push_back({storeName(*options.name), each});
        else if (sign == std::string::npos)
            throw Failure('"' + each + "\" is no assignment: expected VALUE=TEXT");
        else assignments.push_back({valueName(each.substr(0, sign)), each.substr(sign + 1)});
        if (!options.type.empty()) parseStored(assignments.back().text, typeOfWord(options.type));
    }
    return assignments;
}

void set(const SetOptions& options, const Group& group, Session& session) {
    const std::wstring path = keyPath(options.key);
    const auto assignments = assignmentsOf(options);  // a bad one makes no file
    const StoreFile store(group->file, WhenMissing::Make);
    StoreChange change(store);
    const auto key = StoreKey::make(store, path);
    auto& output = session.output;
    for (const auto& [name, text] : assignments) {
        const auto before = key.inqValue(name);
        const unsigned long kept = before ? before->type : keystore::TypeText;
        const auto value =
            parseStored(text, options.type.empty() ? kept : typeOfWord(options.type));
        key.setValue(name, value);
        const std::string shown = shownName(keyBelow(path, name.empty() ? L"@" : name));
        if (before)
            output.print("{} {}: {} -> {}\n", output.in(Colour::Changed, "~"), shown,
                         shortText(*before), shortText(value));
        else output.print("{} {} = {}\n", output.in(Colour::Added, "+"), shown, shortText(value));
    }
    change.commit();
}

void addSet(CLI::App& group, const Group& store, Session& session) {
    auto* const command = group.add_subcommand("set", "Set values; the key and the file are made");
    const auto options = std::make_shared<SetOptions>();
    command->add_option("KEY", options->key, "Path of a key")->required();
    command->add_option("VALUE=TEXT", options->assignments, "What to set to which value")
        ->required();
    command
        ->add_option("--name", options->name,
                     "The name of the value, as it stands; VALUE=TEXT is the text alone then")
        ->option_text("NAME");
    command
        ->add_option("--type", options->type,
                     "The type: else a value keeps its own, and a new one is a text")
        ->option_text("text|expand|multi|dword|qword|binary|none");
    command->footer(
        "All values are one change of the store. A list (multi) has a text on each line, none\n"
        "of them empty; binary is pairs of hexadecimal digits, numbers may be hexadecimal behind "
        "0x.\n\n"
        "Examples:\n  qormodel store --store settings.db set 'Viewer\\Window' 'Position=40 25'\n"
        "  qormodel store --store settings.db set Viewer Starts=3 --type dword");
    command->callback([options, store, &session] { set(*options, store, session); });
}

// rm ----------------------------------------------------------------------------------------------

struct RemoveOptions {
    std::string key;
    std::optional<std::string> value;
    bool isRecursive = false;
};

void remove(const StoreFile& store, const RemoveOptions& options, Session& session) {
    const std::wstring path = keyPath(options.key);
    StoreChange change(store);
    std::wstring removed = path;
    {
        const StoreKey key = keyAt(store, path);
        if (options.value) {
            const std::wstring name = valueName(*options.value);
            removed = keyBelow(path, name.empty() ? L"@" : name);
            if (!key.rmValue(name)) throw store.failure(removed, "is not there");
        } else if (path.empty()) {
            throw store.failure(path, "the root of a store cannot be removed");
        } else if (!options.isRecursive && !key.listSubkeys().empty()) {
            throw store.failure(path, "has keys below it; -r removes them too");
        }
    }
    if (!options.value) rmTree(store, path);
    change.commit();
    session.output.print("{} {}\n", session.output.in(Colour::Removed, "-"), shownName(removed));
}

void addRemove(CLI::App& group, const Group& store, Session& session) {
    auto* const command = group.add_subcommand("rm", "Remove a key or a value");
    const auto options = std::make_shared<RemoveOptions>();
    command->add_option("KEY", options->key, "Path of a key")->required();
    command->add_option("VALUE", options->value,
                        "Name of a value, @ for the default value; else the key itself goes");
    command->add_flag("-r,--recursive", options->isRecursive, "With all keys below it");
    command->footer("Example:\n  qormodel store --store settings.db rm -r 'Viewer\\Window'");
    command->callback([options, store, &session] {
        remove(StoreFile(store->file, WhenMissing::Fail), *options, session);
    });
}
}  // namespace

void addStore(CLI::App& program, Session& session) {
    auto* const group = program.add_subcommand("store", "Work on a key store in a file");
    const auto options = std::make_shared<StoreOptions>();
    group->add_option("--store", options->file, "The file of the store")
        ->required()
        ->option_text("FILE");
    group->require_subcommand(1);
    addList(*group, options, session);
    addGet(*group, options, session);
    addSet(*group, options, session);
    addRemove(*group, options, session);
    addStoreTransfer(*group, options, session);
    group->footer(
        "The path of a key has \\ between its names, so the shell wants it in quotes.\n\n"
        "Example:\n  qormodel store --store settings.db ls");
}

}  // namespace qormodel
