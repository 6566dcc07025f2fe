#include "WholeTextWriter.h"

#include <AttributeContainer/Attribute.h>

#include <QOR/KeyStore.h>
#include <QOR/Text.h>

#include <limits>
#include <utility>

namespace settings {

using namespace QOR;
using namespace QOR::AttributeContainer;

namespace {

constexpr std::size_t readLimit = 1024;  // bytes; RegKeys reads texts that have fewer
constexpr auto allLevels = std::numeric_limits<unsigned>::max();

std::vector<unsigned char> withTerminator(const std::string& text) {
    auto data = keystore::textToData(wide(text));
    data.insert(data.end(), 2, 0);
    return data;
}

}  // namespace

WholeTextWriter::WholeTextWriter(std::shared_ptr<const RegKeys> keys)
    : AttrRegistryVisitor(RegKeysArray{{std::move(keys)}}, true, 0, allLevels) {}

VisitorCore::VisitResult WholeTextWriter::visit(Attribute& attribute) {
    if (!isStored(attribute)) return Continue;
    const std::string name = attribute.getName();
    const auto data = withTerminator(attribute.getValueString());
    if (data.size() >= readLimit) {
        problems.push_back(name + " is too long: " + std::to_string(data.size()) + " bytes");
        return Continue;
    }
    const auto size = static_cast<unsigned long>(data.size());
    for (const auto& key : getKeys())
        if (!key->setKey(name, data.data(), size, keystore::TypeExpandText))
            problems.push_back(name + " could not be stored");
    return Continue;
}

}  // namespace settings
