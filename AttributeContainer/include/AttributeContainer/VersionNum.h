// One version number with its name, its text form and its order.
#pragma once

#include <AttributeContainer/Export.h>
#include <QOR/StringText.h>
#include <QOR/Text.h>

#include <iosfwd>
#include <string>

namespace QOR::AttributeContainer {

/// What is versioned, and which version of it: `major.minor.patch.internal`, a beta level that is 0
/// when the version is no beta, and the text of the source revision.
class QOR_API VersionNum {
public:
    /// Today's format version: a copy of the one in the global `version`.
    /// Takes `Version::versionProtect`, so it must not be called while that is held.
    VersionNum();

    /// Named after the app version of the global `version`; takes `Version::versionProtect` too.
    VersionNum(int major, int minor, int patch, int internal, int beta,
               const std::string& revision);

    VersionNum(const std::string& name, int major, int minor, int patch, int internal, int beta,
               const std::string& revision);

    const std::string& getName() const { return name; }
    void setName(const std::string& newName) { name = newName; }

    /// `major.minor.patch.internal`, with `.beta` behind it if the beta level is not 0.
    std::string getReleaseNumbers() const;

    /// The text for people; the same as `getReleaseNumbers`.
    std::string getUIReleaseNumbers() const;

    /// `major.minor`.
    std::string getShortReleaseNumbers() const;

    std::string getRevision() const { return revision; }

    /// Copies that keep the name and the numbers down to the level before the named one; the
    /// numbers from that level on are 0 and the revision is empty.
    VersionNum maskMinorLevel() const;
    VersionNum maskPatchLevel() const;
    VersionNum maskInternalLevel() const;
    VersionNum maskBetaLevel() const;

    /// Reads the numbers, as `1.2.3.4` or `1.2.3.4.5`; without a fifth number beta becomes 0.
    /// Name and revision stay.
    /// \return false where a point is missing between the first four numbers; the numbers read up
    /// to there are kept and the character in place of the point stays in the stream.
    bool setVersionNumbersFrom(std::istream& stream);

    /// The same from the front of `text`, which loses what was read.
    bool setVersionNumbersFrom(std::string& text);

    /// Whether `second` is newer than `first`. The patch levels 1000 and 100 mark builds that come
    /// before every numbered patch of their minor version, 1000 before 100. Beta levels, names and
    /// revisions play no part.
    static bool isVersionNumberNewer(VersionNum first, VersionNum second);

private:
    friend QOR_API bool operator<(const VersionNum& a, const VersionNum& b);

    /// The steps that a stream and a text have in common.
    template <class Source> bool takeNumbers(Source& source);

    std::string name;
    int major;
    int minor;
    int patch;
    int internal;
    int beta;
    std::string revision;
};

/// The order of major, minor, patch and internal number; beta, name and revision are not compared.
QOR_API bool operator<(const VersionNum& a, const VersionNum& b);
QOR_API bool operator<=(const VersionNum& a, const VersionNum& b);

// The operators below would otherwise hide those of the foundation from this namespace.
using QOR::operator<<;
using QOR::operator>>;

/// Empties the name of `v` and takes its numbers from the front of `text`, as
/// `setVersionNumbersFrom` does. \return `text`
QOR_API std::string& operator>>(std::string& text, VersionNum& v);

/// Appends nothing: a version has no text form outside the model stream. \return `text`
QOR_API std::string& operator<<(std::string& text, const VersionNum& v);

}  // namespace QOR::AttributeContainer
