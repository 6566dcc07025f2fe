#include <QSettings>
#include <memory>

#include "settings/Settings.h"
using namespace bench;
namespace {
template <bool Each> struct Settings {
    QString path;
    std::unique_ptr<QSettings> s;
    explicit Settings(const std::string& dir)
        : path(QString::fromStdString(dir + "/q.ini")),
          s(std::make_unique<QSettings>(path, QSettings::IniFormat)) {}
    static QString key(const std::string& g, const char* n) {
        return QString::fromStdString(g) + QLatin1Char('/') + QLatin1String(n);
    }
    void set(const std::string& g, const char* n, const std::string& v) {
        s->setValue(key(g, n), QString::fromStdString(v));
        if (Each) s->sync();
    }
    void commit() { s->sync(); }
    void reopen() {
        s.reset();
        s = std::make_unique<QSettings>(path, QSettings::IniFormat);
    }
    std::string get(const std::string& g, const char* n) {
        return s->value(key(g, n)).toString().toStdString();
    }
};
BENCH_PEER("W4", "qsettings_ini", Peer, [](Run& run) {
    settings::runAll<Settings<false>>(run);
    run.note("reopen meets QSettings' own cache of unused files, so read is mostly from memory");
});
BENCH_PEER("W4", "qsettings_ini_sync_each", Peer,
           [](Run& run) { settings::runAll<Settings<true>>(run, 200); });
}  // namespace
