#include <boost/property_tree/ini_parser.hpp>
#include <boost/property_tree/ptree.hpp>

#include "settings/Settings.h"
using namespace bench;
namespace {
struct Ini {
    using PT = boost::property_tree::ptree;
    std::string path;
    PT t;
    explicit Ini(const std::string& dir) : path(dir + "/b.ini") {}
    static PT::path_type at(const std::string& g, const char* n) {
        return PT::path_type(g + '|' + n, '|');
    }
    void set(const std::string& g, const char* n, const std::string& v) { t.put(at(g, n), v); }
    void commit() { boost::property_tree::write_ini(path, t); }
    void reopen() {
        t.clear();
        boost::property_tree::read_ini(path, t);
    }
    std::string get(const std::string& g, const char* n) { return t.get<std::string>(at(g, n)); }
};
BENCH_PEER("W4", "boost_ptree_ini", Peer, [](Run& run) { settings::runAll<Ini>(run); });
}  // namespace
