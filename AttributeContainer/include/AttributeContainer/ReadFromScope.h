// What one call of a readFrom works with: the context, and a reader on its stream.
#pragma once

#include <AttributeContainer/Export.h>
#include <AttributeContainer/ModelInFormat.h>
#include <AttributeContainer/ReadContext.h>
#include <QOR/ErrorCode.h>

#include <iosfwd>
#include <memory>

namespace QOR::AttributeContainer {

/// Ties the context of a read to the reader of one nested call. Lives on the call stack; the
/// scopes on a stream end in the reverse order of their making.
class QOR_API ReadFromScope {
public:
    /// A null context means a default one of this scope's own.
    explicit ReadFromScope(std::istream& stream,
                           std::shared_ptr<const ReadContextBase> context = nullptr);
    ReadFromScope(const ReadFromScope&) = delete;
    ReadFromScope& operator=(const ReadFromScope&) = delete;
    virtual ~ReadFromScope();

    /// The reader, with the form that the context has now.
    ModelInFormat& getImf() {
        imf.setFormat(readContext->getFormat());
        return imf;
    }

    std::shared_ptr<const ReadContextBase> getReadContext() const { return readContext; }

    /// Passes on the error with which a read ends. Every reader returns through it, so that a
    /// hard error leaves no propagate keyword behind that the thread's next read would find; no
    /// error and a warning pass untouched. (An exception is seen to by `ModelInFormat`.)
    /// \return `error`
    [[nodiscard]] static ErrorPtr fail(ErrorPtr error);

private:
    ModelInFormat imf;
    std::shared_ptr<const ReadContextBase> readContext;  // never null
};

}  // namespace QOR::AttributeContainer
