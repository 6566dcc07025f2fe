// W4: Boost's property tree in an INI file.
#include "settings/Settings.h"

#include <boost/property_tree/ini_parser.hpp>
#include <boost/property_tree/ptree.hpp>

#include <string>

namespace {

class IniFile {
public:
    explicit IniFile(const std::string& directory) : path(directory + "/boost.ini") {}
    void set(const std::string& group, const char* name, const std::string& value) {
        tree.put(pathOf(group, name), value);
    }
    void commit() { boost::property_tree::write_ini(path, tree); }
    void reopen() {
        tree.clear();
        boost::property_tree::read_ini(path, tree);
    }
    std::string get(const std::string& group, const char* name) {
        return tree.get<std::string>(pathOf(group, name));
    }

private:
    using Tree = boost::property_tree::ptree;
    static Tree::path_type pathOf(const std::string& group, const char* name) {
        return Tree::path_type(group + '|' + name, '|');
    }

    std::string path;
    Tree tree;
};

BENCH_PEER("W4", "boost_ptree_ini", Peer,
           [](bench::Run& run) { bench::settings::runAll<IniFile>(run); });

}  // namespace
