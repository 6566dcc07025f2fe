// The options of one whole write.
#pragma once

#include <AttributeContainer/Export.h>

namespace QOR::AttributeContainer {

class SharedInstanceCollection;

/// What one write shall do, shared by all nested `writeTo` calls and passed to them as const. A
/// host derives from it to pass options of its own. Unlocked: one write on one thread owns it.
class QOR_API WriteContextBase {
public:
    /// \param format a value of `ModelFormat::Format`
    explicit WriteContextBase(int format = 0);
    virtual ~WriteContextBase();

    /// The form of the stream. A change takes effect at the next `WriteToScope::getMof`.
    int getFormat() const { return format; }
    void setFormat(int value) { format = value; }

    /// Whether attributes that are not `marked`, and fields without a marked attribute, are left
    /// out; false at first.
    bool writeOnlyMarked() const { return flags.writeOnlyMarked; }
    void setWriteOnlyMarked(bool value) { flags.writeOnlyMarked = value; }

    /// Whether children whose name attribute is not `marked` are left out, with all below them;
    /// false at first. Other marks of the child do not count.
    bool writeOnlyMarkedObjects() const { return flags.writeOnlyMarkedObjects; }
    void setWriteOnlyMarkedObjects(bool value) { flags.writeOnlyMarkedObjects = value; }

    /// For the clients of the library, which itself does not ask; false at first.
    bool writeDemandData() const { return flags.writeDemandData; }
    void setWriteDemandData(bool value) { flags.writeDemandData = value; }

    /// Whether a value that equals its default is written all the same; false at first.
    bool writeDefaultValues() const { return flags.writeDefaultValues; }
    void setWriteDefaultValues(bool value) { flags.writeDefaultValues = value; }

    /// Whether an object without a UUID gets one before it is written, and keeps it; false at
    /// first.
    bool createObjectUuid() const { return flags.createObjectUuid; }
    void setCreateObjectUuid(bool value) { flags.createObjectUuid = value; }

    /// Whether an object writes its children; true at first.
    bool writeChildren() const { return flags.writeChildren; }
    void setWriteChildren(bool value) { flags.writeChildren = value; }

    /// Whether a container writes its fields; true at first.
    bool writeFields() const { return flags.writeFields; }
    void setWriteFields(bool value) { flags.writeFields = value; }

    /// For the clients of the library, which itself does not ask and enciphers nothing; false at
    /// first.
    bool writeEncrypted() const { return flags.writeEncrypted; }
    void setWriteEncrypted(bool value) { flags.writeEncrypted = value; }

    /// The collection that makes containers be written once and referred to afterwards, null at
    /// first. Not owned: it must outlive the write. A write marks the containers that it has put out
    /// (`AttrContainer::isSerialized`); clear these marks ahead of the next one, which would else
    /// write references alone.
    SharedInstanceCollection* getSharedInstances() const { return sharedInstances; }
    void setSharedInstances(SharedInstanceCollection* instances) { sharedInstances = instances; }

private:
    struct Flags {
        bool writeOnlyMarked : 1 = false;
        bool writeOnlyMarkedObjects : 1 = false;
        bool writeDemandData : 1 = false;
        bool writeDefaultValues : 1 = false;
        bool createObjectUuid : 1 = false;
        bool writeChildren : 1 = true;
        bool writeFields : 1 = true;
        bool writeEncrypted : 1 = false;
    };

    int format;
    Flags flags;
    SharedInstanceCollection* sharedInstances = nullptr;
};

}  // namespace QOR::AttributeContainer
