// The options of one whole read.
#pragma once

#include <AttributeContainer/Export.h>

#include <memory>
#include <string>

namespace QOR::AttributeContainer {

class Object;
class ReferenceDictionary;

/// What one read shall do, shared by all nested `readFrom` calls and passed to them as const. A
/// host derives from it to pass options of its own. Unlocked: one read on one thread owns it.
class QOR_API ReadContextBase {
public:
    ReadContextBase();
    ReadContextBase(const ReadContextBase&) = delete;
    ReadContextBase& operator=(const ReadContextBase&) = delete;
    virtual ~ReadContextBase();

    /// The form of the stream, a value of `ModelFormat::Format`; `Text` at first.
    int getFormat() const { return format; }
    void setFormat(int value) { format = value; }

    /// For the clients of the library, which itself does not ask; false at first.
    bool readDemandData() const { return flags.readDemandData; }
    void setReadDemandData(bool value) { flags.readDemandData = value; }

    /// Whether, of the attributes that are there already, only those that are `marked` take the
    /// values of the stream; false at first. A new object has no marks, nor have the children and
    /// fields that the read makes.
    bool readMarked() const { return flags.readMarked; }
    void setReadMarked(bool value) { flags.readMarked = value; }

    /// For the clients of the library, which itself does not ask; false at first.
    bool updateObject() const { return flags.updateObject; }
    void setUpdateObject(bool value) { flags.updateObject = value; }

    /// For the clients of the library, which itself does not ask and deciphers nothing; false at
    /// first.
    bool readEncrypted() const { return flags.readEncrypted; }
    void setReadEncrypted(bool value) { flags.readEncrypted = value; }

    /// Whether a field of an unknown type is taken in as a placeholder; otherwise it ends the read.
    /// True at first.
    bool areUnknownContainersAccepted() const { return flags.areUnknownContainersAccepted; }
    void setAreUnknownContainersAccepted(bool value) { flags.areUnknownContainersAccepted = value; }

    /// The dictionary through which references of the stream are resolved, null at first. It may
    /// change while the context is const.
    ReferenceDictionary* getReferenceDictionary() const { return referenceDictionary.get(); }

    /// Takes the dictionary over and destroys the former one.
    void setReferenceDictionary(std::unique_ptr<ReferenceDictionary> dictionary);

    /// How many children and fields may lie inside one another; a stream that goes deeper is
    /// refused with ParseFailed. 1,000 at first, which take 2 MB of the call stack at the most: a
    /// level needs up to 2 kB. A thread with a stack of 512 kB should accept no more than 200.
    unsigned getMaxDepth() const { return maxDepth; }
    void setMaxDepth(unsigned value) { maxDepth = value; }

    /// Does nothing; a place for a host to breathe during a long read.
    void idle() const;

    /// Makes no object. \return an empty pointer
    std::shared_ptr<Object> createObject(const std::string& type);

private:
    struct Flags {
        bool readDemandData : 1 = false;
        bool readMarked : 1 = false;
        bool updateObject : 1 = false;
        bool readEncrypted : 1 = false;
        bool areUnknownContainersAccepted : 1 = true;
    };

    int format = 0;
    Flags flags;
    std::unique_ptr<ReferenceDictionary> referenceDictionary;
    unsigned maxDepth = 1000;
};

}  // namespace QOR::AttributeContainer
