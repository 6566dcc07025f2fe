// W4: GKeyFile, and GSettings in memory and over a key file.
#include "settings/Settings.h"

#define G_SETTINGS_ENABLE_BACKEND
#include <gio/gio.h>
#include <gio/gsettingsbackend.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <unordered_map>

namespace {

std::string takeText(char* text) {
    const std::string result = text ? text : "";
    g_free(text);
    return result;
}

class KeyFile {
public:
    explicit KeyFile(const std::string& directory) : path(directory + "/glib.ini") {}
    KeyFile(const KeyFile&) = delete;
    KeyFile& operator=(const KeyFile&) = delete;
    ~KeyFile() { g_key_file_free(file); }
    void set(const std::string& group, const char* name, const std::string& value) {
        g_key_file_set_string(file, group.c_str(), name, value.c_str());
    }
    void commit() {
        if (!g_key_file_save_to_file(file, path.c_str(), nullptr))
            throw std::runtime_error("the key file cannot be written");
    }
    void reopen() {
        g_key_file_free(file);
        file = g_key_file_new();
        g_key_file_load_from_file(file, path.c_str(), G_KEY_FILE_NONE, nullptr);
    }
    std::string get(const std::string& group, const char* name) {
        return takeText(g_key_file_get_string(file, group.c_str(), name, nullptr));
    }

private:
    std::string path;
    GKeyFile* file = g_key_file_new();
};

std::string keyOf(const char* name) {  // in small letters, as a schema wants them
    std::string key = name;
    for (char& letter : key) letter = g_ascii_tolower(letter);
    return key;
}

GSettingsSchema* makeSchema() {
    const std::string directory = bench::scratchDir() + "/schema";
    std::filesystem::create_directories(directory);
    {
        std::ofstream file(directory + "/bench.gschema.xml");
        file << "<schemalist><schema id='bench.group'>";
        for (const char* const name : bench::settingNames)
            file << "<key name='" << keyOf(name) << "' type='s'><default>''</default></key>";
        file << "</schema></schemalist>";
    }
    const std::string command = "glib-compile-schemas " + directory + " 2>/dev/null";
    if (std::system(command.c_str()) != 0)
        throw std::runtime_error("glib-compile-schemas does not run");
    auto* const source =
        g_settings_schema_source_new_from_directory(directory.c_str(), nullptr, TRUE, nullptr);
    return source ? g_settings_schema_source_lookup(source, "bench.group", FALSE) : nullptr;
}

/// A schema without a path stands for all groups, each of which has an object of its own.
GSettingsSchema* schema() {
    static GSettingsSchema* const made = makeSchema();
    if (!made) throw std::runtime_error("the schema cannot be read");
    return made;
}

template <bool IsInFile> class SettingsObjects {
public:
    explicit SettingsObjects(const std::string& directory) : path(directory + "/gsettings.ini") {
        schema();
        backend = openBackend();
    }
    SettingsObjects(const SettingsObjects&) = delete;
    SettingsObjects& operator=(const SettingsObjects&) = delete;
    ~SettingsObjects() {
        closeAll();
        g_object_unref(backend);
    }
    void set(const std::string& group, const char* name, const std::string& value) {
        g_settings_set_string(settingsOf(group), keyOf(name).c_str(), value.c_str());
    }
    void commit() { g_settings_sync(); }
    void reopen() {
        closeAll();
        if (!IsInFile) return;
        g_object_unref(backend);
        backend = openBackend();
    }
    std::string get(const std::string& group, const char* name) {
        return takeText(g_settings_get_string(settingsOf(group), keyOf(name).c_str()));
    }

private:
    GSettingsBackend* openBackend() const {
        return IsInFile ? g_keyfile_settings_backend_new(path.c_str(), "/", nullptr)
                        : g_memory_settings_backend_new();
    }
    GSettings* settingsOf(const std::string& group) {
        GSettings*& settings = opened[group];
        if (!settings)
            settings = g_settings_new_full(schema(), backend, ("/" + group + "/").c_str());
        return settings;
    }
    void closeAll() {
        for (const auto& [group, settings] : opened) g_object_unref(settings);
        opened.clear();
    }

    std::string path;
    GSettingsBackend* backend = nullptr;
    std::unordered_map<std::string, GSettings*> opened;
};

BENCH_PEER("W4", "gkeyfile", Peer, [](bench::Run& run) { bench::settings::runAll<KeyFile>(run); });
BENCH_PEER("W4", "gsettings_memory", Peer, [](bench::Run& run) {
    bench::settings::runAll<SettingsObjects<false>>(run);
    run.note("nothing reaches the disk");
});
BENCH_PEER("W4", "gsettings_keyfile", Peer,
           [](bench::Run& run) { bench::settings::runAll<SettingsObjects<true>>(run, 100); });

}  // namespace
