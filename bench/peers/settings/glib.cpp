#define G_SETTINGS_ENABLE_BACKEND
#include <gio/gio.h>
#include <gio/gsettingsbackend.h>

#include <cstdlib>
#include <fstream>
#include <unordered_map>

#include "settings/Settings.h"
using namespace bench;
namespace {
struct KeyFile {
    std::string path;
    GKeyFile* k = g_key_file_new();
    explicit KeyFile(const std::string& dir) : path(dir + "/g.ini") {}
    ~KeyFile() { g_key_file_free(k); }
    void set(const std::string& g, const char* n, const std::string& v) {
        g_key_file_set_string(k, g.c_str(), n, v.c_str());
    }
    void commit() {
        if (!g_key_file_save_to_file(k, path.c_str(), nullptr)) throw std::runtime_error("keyfile");
    }
    void reopen() {
        g_key_file_free(k);
        k = g_key_file_new();
        g_key_file_load_from_file(k, path.c_str(), G_KEY_FILE_NONE, nullptr);
    }
    std::string get(const std::string& g, const char* n) {
        char* v = g_key_file_get_string(k, g.c_str(), n, nullptr);
        std::string r = v ? v : "";
        g_free(v);
        return r;
    }
};

// GSettings needs a compiled schema; a relocatable one stands for all groups, one GSettings object
// for each group.
GSettingsSchema* schema() {
    static GSettingsSchema* s = [] {
        const std::string dir = scratchDir() + "/schema";
        if (std::system(("mkdir -p " + dir).c_str())) throw std::runtime_error("mkdir");
        {
            std::ofstream x(dir + "/bench.gschema.xml");
            x << "<schemalist><schema id='bench.group'>";
            for (auto* n : settingNames) {
                std::string k = n;
                for (auto& ch : k) ch = char(g_ascii_tolower(ch));
                x << "<key name='" << k << "' type='s'><default>''</default></key>";
            }
            x << "</schema></schemalist>";
        }
        if (std::system(("glib-compile-schemas " + dir + " 2>/dev/null").c_str()))
            throw std::runtime_error("glib-compile-schemas");
        auto* src =
            g_settings_schema_source_new_from_directory(dir.c_str(), nullptr, TRUE, nullptr);
        return src ? g_settings_schema_source_lookup(src, "bench.group", FALSE) : nullptr;
    }();
    if (!s) throw std::runtime_error("no schema");
    return s;
}
template <bool File> struct GSet {
    std::string path;
    GSettingsBackend* be = nullptr;
    std::unordered_map<std::string, GSettings*> open;
    void make() {
        be = File ? g_keyfile_settings_backend_new(path.c_str(), "/", nullptr)
                  : g_memory_settings_backend_new();
    }
    explicit GSet(const std::string& dir) : path(dir + "/gs.ini") {
        schema();
        make();
    }
    void closeAll() {
        for (auto& [n, s] : open) g_object_unref(s);
        open.clear();
    }
    ~GSet() {
        closeAll();
        g_object_unref(be);
    }
    GSettings* at(const std::string& g) {
        auto& s = open[g];
        if (!s) s = g_settings_new_full(schema(), be, ("/" + g + "/").c_str());
        return s;
    }
    static std::string key(const char* n) {
        std::string k = n;
        for (auto& ch : k) ch = char(g_ascii_tolower(ch));
        return k;
    }
    void set(const std::string& g, const char* n, const std::string& v) {
        g_settings_set_string(at(g), key(n).c_str(), v.c_str());
    }
    void commit() { g_settings_sync(); }
    void reopen() {
        closeAll();
        if (File) {
            g_object_unref(be);
            make();
        }
    }
    std::string get(const std::string& g, const char* n) {
        char* v = g_settings_get_string(at(g), key(n).c_str());
        std::string r = v;
        g_free(v);
        return r;
    }
};
BENCH_PEER("W4", "gkeyfile", Peer, [](Run& run) { settings::runAll<KeyFile>(run); });
BENCH_PEER("W4", "gsettings_memory", Peer, [](Run& run) {
    settings::runAll<GSet<false>>(run);
    run.note("nothing reaches the disk");
});
BENCH_PEER("W4", "gsettings_keyfile", Peer,
           [](Run& run) { settings::runAll<GSet<true>>(run, 100); });
}  // namespace
