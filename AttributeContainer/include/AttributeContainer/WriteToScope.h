// What one call of a writeTo works with: the context, and a writer on its stream.
#pragma once

#include <AttributeContainer/Export.h>
#include <AttributeContainer/ModelOutFormat.h>
#include <AttributeContainer/WriteContext.h>

#include <iosfwd>
#include <memory>

namespace QOR::AttributeContainer {

/// Ties the context of a write to the writer of one nested call. Lives on the call stack; a block
/// is closed in the scope that opened it.
class QOR_API WriteToScope {
public:
    /// A null context means a default one of this scope's own, in the form `Text`.
    explicit WriteToScope(std::ostream& stream,
                          std::shared_ptr<const WriteContextBase> context = nullptr);
    WriteToScope(const WriteToScope&) = delete;
    WriteToScope& operator=(const WriteToScope&) = delete;
    virtual ~WriteToScope();

    /// The writer, with the form that the context has now.
    ModelOutFormat& getMof() {
        mof.setFormat(writeContext->getFormat());
        return mof;
    }

    std::shared_ptr<const WriteContextBase> getWriteContext() const { return writeContext; }

private:
    ModelOutFormat mof;
    std::shared_ptr<const WriteContextBase> writeContext;  // never null
};

}  // namespace QOR::AttributeContainer
