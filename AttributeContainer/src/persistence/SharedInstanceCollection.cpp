#include <AttributeContainer/SharedInstanceCollection.h>

#include <AttributeContainer/DataInFormat.h>
#include <AttributeContainer/DataOutFormat.h>
#include <AttributeContainer/ReadFromScope.h>
#include <AttributeContainer/WriteToScope.h>
#include <QOR/KeyTable.h>

#include "persistence/BlockEnd.h"

#include <istream>
#include <ostream>
#include <utility>

namespace QOR::AttributeContainer {

namespace {

enum : std::uint64_t { CollectionToken = 1, InstancesToken = 2, EndToken = 3 };

const DataStructures::KeyTable& getKeyTable() {
    static const DataStructures::KeyTable table({
        {CollectionToken, "SharedInstanceCollection"},
        {InstancesToken, "Instances"},
        {EndToken, ""},
    });
    return table;
}

}  // namespace

const std::string& SharedInstanceCollection::getStaticClassName() {
    static const std::string className = "SharedInstanceCollection";
    return className;
}

const std::string& SharedInstanceCollection::getClassName() const { return getStaticClassName(); }

SharedInstanceCollection::SharedInstanceCollection() = default;
SharedInstanceCollection::~SharedInstanceCollection() = default;

void SharedInstanceCollection::insert(std::uint64_t key) { instanceKeys.insert(key); }

ErrorPtr SharedInstanceCollection::writeTo(std::ostream& stream,
                                           std::shared_ptr<const WriteContextBase> context) {
    WriteToScope scope(stream, std::move(context));
    auto& mof = scope.getMof();
    mof.startBlock("SharedInstanceCollection").startBlock("Instances");
    DataOutFormat<std::set<std::uint64_t>>(stream, mof.getFormat()).put(instanceKeys);
    mof.endBlock().endBlock();
    if (!stream.good()) return QOR_ERROR(StreamFailed, "SharedInstanceCollection::writeTo");
    return nullptr;
}

ErrorPtr SharedInstanceCollection::readFrom(std::istream& stream,
                                            std::shared_ptr<const ReadContextBase> context) {
    ReadFromScope scope(stream, std::move(context));
    auto& imf = scope.getImf();
    while (const auto* keyword = imf.peekKeyword()) {
        if (isBlockEnd(*keyword)) break;
        switch (getKeyTable().keyToToken(*keyword)) {
            case CollectionToken:
                imf.nextKeyword();  // the brace
                imf.nextKeyword();  // what stands in the block
                break;
            case InstancesToken:
                imf.nextKeyword();  // the brace
                instanceKeys = DataInFormat<std::set<std::uint64_t>>(stream, imf.getFormat()).get();
                imf.nextKeyword();  // the end of the block
                imf.nextKeyword();
                break;
            default:
                return ReadFromScope::fail(
                    QOR_ERROR(ParseFailed, "SharedInstanceCollection::readFrom"));
        }
    }
    return nullptr;
}

void SharedInstanceCollection::copyToVector(std::vector<std::uint64_t>& keys) {
    keys.assign(instanceKeys.begin(), instanceKeys.end());
}

}  // namespace QOR::AttributeContainer
