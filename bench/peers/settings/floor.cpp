// W4 floor: maps in memory, the whole store written as one text file at commit.
#include <cstdio>
#include <fstream>
#include <map>
#include <unordered_map>

#include "settings/Settings.h"
using namespace bench;
namespace {
struct MapFile {
    std::string path;
    std::unordered_map<std::string, std::map<std::string, std::string, std::less<>>> m;
    explicit MapFile(const std::string& dir) : path(dir + "/map.txt") {}
    void set(const std::string& g, const char* n, const std::string& v) { m[g][n] = v; }
    void commit() {
        std::string t;
        for (auto& [g, vs] : m) {
            t += '[';
            t += g;
            t += "]\n";
            for (auto& [n, v] : vs) {
                t += n;
                t += '=';
                t += v;
                t += '\n';
            }
        }
        std::ofstream(path + ".new") << t;
        std::rename((path + ".new").c_str(), path.c_str());
    }
    void reopen() {
        m.clear();
        std::ifstream in(path);
        decltype(m)::mapped_type* g = nullptr;
        for (std::string l; std::getline(in, l);) {
            if (l[0] == '[') g = &m[l.substr(1, l.size() - 2)];
            else if (const auto e = l.find('='); g && e != l.npos)
                (*g)[l.substr(0, e)] = l.substr(e + 1);
        }
    }
    std::string get(const std::string& g, const char* n) { return m.at(g).find(n)->second; }
};
BENCH_PEER("W4", "map_and_file", Floor, [](Run& run) { settings::runAll<MapFile>(run); });
}  // namespace
