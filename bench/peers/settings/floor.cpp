// W4: the floor, maps in memory; a commit writes all of them into one file.
#include "settings/Settings.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <unordered_map>

namespace {

class MapAndFile {
public:
    explicit MapAndFile(const std::string& directory) : path(directory + "/map.txt") {}
    void set(const std::string& group, const char* name, const std::string& value) {
        groups[group][name] = value;
    }
    void commit() {
        std::string text;
        for (const auto& [group, values] : groups) {
            text += '[' + group + "]\n";
            for (const auto& [name, value] : values) text += name + '=' + value + '\n';
        }
        std::ofstream(path + ".new") << text;
        std::filesystem::rename(path + ".new", path);
    }
    void reopen() {
        groups.clear();
        std::ifstream file(path);
        Values* values = nullptr;
        for (std::string line; std::getline(file, line);) {
            const auto sign = line.find('=');
            if (line.starts_with('[')) values = &groups[line.substr(1, line.size() - 2)];
            else if (values && sign != std::string::npos)
                (*values)[line.substr(0, sign)] = line.substr(sign + 1);
        }
    }
    std::string get(const std::string& group, const char* name) {
        return groups.at(group).find(name)->second;
    }

private:
    using Values = std::map<std::string, std::string, std::less<>>;

    std::string path;
    std::unordered_map<std::string, Values> groups;
};

BENCH_PEER("W4", "map_and_file", Floor,
           [](bench::Run& run) { bench::settings::runAll<MapAndFile>(run); });

}  // namespace
