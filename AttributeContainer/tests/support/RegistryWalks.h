// Walks that lay containers into a store and take them out again, in few words.
#pragma once

#include "support/RegistryStores.h"

#include <AttributeContainer/AttrRegistryVisitor.h>
#include <AttributeContainer/CustAttrList.h>
#include <AttributeContainer/kVAttrContainer.h>

#include <QOR/Text.h>

#include <memory>
#include <string>
#include <utility>

namespace QOR::AttributeContainer::Testing {

inline constexpr unsigned allLevels = 1000;

inline std::shared_ptr<const RegKeys> keysAt(const std::string& prefix, keystore::HKEY root) {
    return std::make_shared<RegKeys>(prefix, root, false);
}

inline VisitorCore::VisitResult write(AttrContainer& container,
                                      std::shared_ptr<const RegKeys> keys) {
    AttrWriteRegistry visitor(std::move(keys), 0, allLevels);
    return container.attributeVisitor(visitor, true);
}

/// How many attributes were read; a walk that does not come to its end fails the test.
inline int read(AttrContainer& container, std::shared_ptr<const RegKeys> keys,
                bool notify = false) {
    AttrReadRegistry visitor(std::move(keys), notify, 0, allLevels);
    EXPECT_EQ(container.attributeVisitor(visitor, true), VisitorCore::Continue);
    return visitor.getNumRead();
}

/// Stores a text with a terminator, which reads whole.
inline void storeWhole(keystore::HKEY root, const std::string& prefix, const std::string& name,
                       const std::string& text) {
    const RegKeys keys(prefix, root, false);
    ASSERT_TRUE(keys.setKey(name, text + std::string(1, '\0')));
}

}  // namespace QOR::AttributeContainer::Testing
