// W4: QSettings in an INI file, written at a commit or at each value.
#include "settings/Settings.h"

#include <QSettings>

#include <memory>
#include <string>

namespace {

template <bool SyncsEach> class IniFile {
public:
    explicit IniFile(const std::string& directory)
        : path(QString::fromStdString(directory + "/qt.ini")) {
        reopen();
    }
    void set(const std::string& group, const char* name, const std::string& value) {
        settings->setValue(keyOf(group, name), QString::fromStdString(value));
        if (SyncsEach) settings->sync();
    }
    void commit() { settings->sync(); }
    void reopen() {
        settings.reset();
        settings = std::make_unique<QSettings>(path, QSettings::IniFormat);
    }
    std::string get(const std::string& group, const char* name) {
        return settings->value(keyOf(group, name)).toString().toStdString();
    }

private:
    static QString keyOf(const std::string& group, const char* name) {
        return QString::fromStdString(group) + QLatin1Char('/') + QLatin1String(name);
    }

    QString path;
    std::unique_ptr<QSettings> settings;
};

BENCH_PEER("W4", "qsettings_ini", Peer, [](bench::Run& run) {
    bench::settings::runAll<IniFile<false>>(run);
    run.note("QSettings keeps files that it has closed, so reading is mostly from memory");
});
BENCH_PEER("W4", "qsettings_ini_sync_each", Peer,
           [](bench::Run& run) { bench::settings::runAll<IniFile<true>>(run, 200); });

}  // namespace
