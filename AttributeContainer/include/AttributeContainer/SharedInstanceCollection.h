// The instance keys of the containers that a stream holds once and refers to afterwards.
#pragma once

#include <AttributeContainer/Export.h>
#include <QOR/ErrorCode.h>

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace QOR::AttributeContainer {

class ReadContextBase;
class WriteContextBase;

/// The writing half of sharing: the keys of the containers that were written as a reference.
///
/// A client sets it on the write context and writes it into the stream; the reading client reads
/// it before the fields that use it and declares its keys in a `ReferenceDictionary`. Keys mean
/// nothing beyond one stream. One thread at a time.
class QOR_API SharedInstanceCollection {
public:
    static const std::string& getStaticClassName();
    virtual const std::string& getClassName() const;

    SharedInstanceCollection();
    virtual ~SharedInstanceCollection();

    /// Adds the key; one that is there already is not added again.
    void insert(std::uint64_t key);

    /// Writes the keys as a block. A null context means a default one.
    /// \return StreamFailed if the stream is not good afterwards
    [[nodiscard]] virtual ErrorPtr writeTo(std::ostream& stream,
                                           std::shared_ptr<const WriteContextBase> context);

    /// Reads such a block and replaces the keys by its own; ends quietly where the block or the
    /// stream ends. A null context means a default one.
    /// \return ParseFailed at a word that does not belong here; the keys read so far stay
    [[nodiscard]] virtual ErrorPtr readFrom(std::istream& stream,
                                            std::shared_ptr<const ReadContextBase> context);

    /// Replaces the content of `keys` by the keys in ascending order.
    virtual void copyToVector(std::vector<std::uint64_t>& keys);

private:
    std::set<std::uint64_t> instanceKeys;
};

}  // namespace QOR::AttributeContainer
