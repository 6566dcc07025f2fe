// The version numbers of the library in one record.
#pragma once

#include <AttributeContainer/Export.h>
#include <AttributeContainer/VersionNum.h>

#include <memory>
#include <mutex>
#include <string>

namespace QOR::AttributeContainer {

/// All version numbers of the library. The record of the process is the global `version`.
///
/// Every access takes `versionProtect` for the moment of the call; the lock does not guard what a
/// caller later does with the pointer that it got.
class QOR_API Version {
public:
    /// Orders the reads and writes of the members of all records. Nobody holds it while taking
    /// another lock, nor while building a `VersionNum` that asks the global record.
    static std::mutex versionProtect;

    /// A record of a host's own, for `ModelOutFormat::writeHeader`, which writes the format version
    /// and on demand the root model version.
    Version(VersionNum app, VersionNum format, VersionNum socket, VersionNum api,
            VersionNum rootModel, std::string pretty);

    /// A copy with a saved model version of its own.
    Version(const Version& other);
    Version& operator=(const Version&) = delete;
    ~Version();

    /// Pointers to the members; they last as long as the record.
    const VersionNum* getAppVersion() const;
    const VersionNum* getFormatVersion() const;
    const VersionNum* getRootModelVersion() const;
    const VersionNum* getSocketVersion() const;
    const VersionNum* getApiVersion() const;
    const std::string& getPrettyVersion() const;

    /// \return null until one is set; the pointer lasts until the next `setSavedModelVersion`.
    const VersionNum* getSavedModelVersion() const;

    void setAppVersion(const VersionNum& value);
    void setFormatVersion(const VersionNum& value);
    void setRootModelVersion(const VersionNum& value);
    void setSavedModelVersion(const VersionNum& value);
    void setSocketVersion(const VersionNum& value);
    void setApiVersion(const VersionNum& value);

    /// Always true.
    bool isBetaCandidate() const;

    /// The record of the process, made at the first call and never destroyed, so that static
    /// objects may use it in their constructors and destructors. `version` is its name.
    static Version& theRecord();

private:
    friend class VersionNum;  // its constructors copy a member of the global record

    // Each under the lock.
    VersionNum copyOf(VersionNum Version::*member) const;
    const VersionNum* addressOf(VersionNum Version::*member) const;
    void set(VersionNum Version::*member, const VersionNum& value);
    Version(const Version& other, const std::lock_guard<std::mutex>& held);

    VersionNum appVersion;
    VersionNum formatVersion;
    VersionNum rootModelVersion;
    std::unique_ptr<VersionNum> savedModelVersion;
    VersionNum socketVersion;
    VersionNum apiVersion;
    std::string prettyVersion;
};

/// The version numbers of this library. It stands before the static objects of every source file
/// that includes this header.
QOR_API inline Version& version = Version::theRecord();

}  // namespace QOR::AttributeContainer

/// For foreign callers. \return null in every case
extern "C" QOR_API const char* attributeContainergetVersionString();
