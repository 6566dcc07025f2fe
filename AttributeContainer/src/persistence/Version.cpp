#include <AttributeContainer/Version.h>

#include <utility>

namespace QOR::AttributeContainer {

#if defined(__MINGW32__)
// There a mutex comes into being at run time: ahead of what may ask for a version at the start.
[[gnu::init_priority(101)]] std::mutex Version::versionProtect;
#else
constinit std::mutex Version::versionProtect;
#endif

Version& Version::theRecord() {
    // On the heap, since objects that are destroyed after the statics of this file may still ask.
    static Version& record = *new Version(
        VersionNum("kVLib", 9, 1, 0, 0, 0, "APPLICATION_VERSION_REVISION"),
        VersionNum("kVLib", 9, 1, 0, 0, 0, ""), VersionNum("kVSocket", 1, 10, 0, 0, 0, ""),
        VersionNum("API", 2, 0, 24, 0, 0, ""), VersionNum("RootModel", 0, 0, 0, 0, 0, ""), "");
    return record;
}

Version::Version(VersionNum app, VersionNum format, VersionNum socket, VersionNum api,
                 VersionNum rootModel, std::string pretty)
    : appVersion(std::move(app)),
      formatVersion(std::move(format)),
      rootModelVersion(std::move(rootModel)),
      socketVersion(std::move(socket)),
      apiVersion(std::move(api)),
      prettyVersion(std::move(pretty)) {}

Version::Version(const Version& other)
    : Version(other, std::lock_guard<std::mutex>(versionProtect)) {}

Version::Version(const Version& other, const std::lock_guard<std::mutex>&)
    : appVersion(other.appVersion),
      formatVersion(other.formatVersion),
      rootModelVersion(other.rootModelVersion),
      savedModelVersion(other.savedModelVersion
                            ? std::make_unique<VersionNum>(*other.savedModelVersion)
                            : nullptr),
      socketVersion(other.socketVersion),
      apiVersion(other.apiVersion),
      prettyVersion(other.prettyVersion) {}

Version::~Version() = default;

VersionNum Version::copyOf(VersionNum Version::*member) const {
    const std::lock_guard<std::mutex> lock(versionProtect);
    return this->*member;
}

const VersionNum* Version::addressOf(VersionNum Version::*member) const {
    const std::lock_guard<std::mutex> lock(versionProtect);
    return &(this->*member);
}

void Version::set(VersionNum Version::*member, const VersionNum& value) {
    const std::lock_guard<std::mutex> lock(versionProtect);
    this->*member = value;
}

const VersionNum* Version::getAppVersion() const { return addressOf(&Version::appVersion); }

const VersionNum* Version::getFormatVersion() const { return addressOf(&Version::formatVersion); }

const VersionNum* Version::getRootModelVersion() const {
    return addressOf(&Version::rootModelVersion);
}

const VersionNum* Version::getSocketVersion() const { return addressOf(&Version::socketVersion); }

const VersionNum* Version::getApiVersion() const { return addressOf(&Version::apiVersion); }

const VersionNum* Version::getSavedModelVersion() const {
    const std::lock_guard<std::mutex> lock(versionProtect);
    return savedModelVersion.get();
}

const std::string& Version::getPrettyVersion() const {
    const std::lock_guard<std::mutex> lock(versionProtect);
    return prettyVersion;
}

void Version::setAppVersion(const VersionNum& value) { set(&Version::appVersion, value); }

void Version::setFormatVersion(const VersionNum& value) { set(&Version::formatVersion, value); }

void Version::setRootModelVersion(const VersionNum& value) {
    set(&Version::rootModelVersion, value);
}

void Version::setSocketVersion(const VersionNum& value) { set(&Version::socketVersion, value); }

void Version::setApiVersion(const VersionNum& value) { set(&Version::apiVersion, value); }

void Version::setSavedModelVersion(const VersionNum& value) {
    const std::lock_guard<std::mutex> lock(versionProtect);
    savedModelVersion = std::make_unique<VersionNum>(value);
}

bool Version::isBetaCandidate() const { return true; }

}  // namespace QOR::AttributeContainer

const char* attributeContainergetVersionString() {
    return nullptr;  // no caller may rely on a text, but the export must be found
}
