// Contexts of streams that refer to containers, and what a read leaves behind, for tests.
#pragma once

#include <AttributeContainer/ModelInFormat.h>
#include <AttributeContainer/ReadContext.h>
#include <AttributeContainer/ReferenceDictionary.h>
#include <AttributeContainer/SharedInstanceCollection.h>
#include <AttributeContainer/WriteContext.h>

#include <cstdint>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace QOR::AttributeContainer::Testing {

/// A context with a dictionary in which these keys are declared.
inline std::shared_ptr<ReadContextBase> resolving(std::vector<std::uint64_t> keys) {
    auto dictionary = std::make_unique<ReferenceDictionary>();
    dictionary->initializeFromVector(keys);
    auto context = std::make_shared<ReadContextBase>();
    context->setReferenceDictionary(std::move(dictionary));
    return context;
}

/// A context under which what stands in several places is written once.
inline std::shared_ptr<WriteContextBase> sharing(SharedInstanceCollection& instances) {
    auto context = std::make_shared<WriteContextBase>();
    context->setSharedInstances(&instances);
    return context;
}

/// The keyword that the thread's next read finds on a stream of its own, which holds "clean".
inline std::string keywordOfNextRead() {
    std::istringstream in("clean ");
    return ModelInFormat(in).getKeyword().value_or("(none)");
}

}  // namespace QOR::AttributeContainer::Testing
