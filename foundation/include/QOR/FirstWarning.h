// The keeper of the first warning in a loop that reads or writes many elements.
#pragma once

#include <QOR/ErrorCode.h>

#include <utility>

namespace QOR::AttributeContainer {

/// Tells errors that end a loop from warnings, of which a loop reports the first one at its end.
///
///     if (auto error = firstWarning.take(readElement(key))) return error;
///     ...
///     return firstWarning.release();
class FirstWarning {
public:
    /// Keeps `error` if it is the first warning, drops it if it is a later one.
    /// \return what ends the loop: an error that is no warning, else an empty pointer.
    [[nodiscard]] ErrorPtr take(ErrorPtr error) {
        if (!error || !error->isWarning()) return error;
        if (!kept) kept = std::move(error);
        return nullptr;
    }

    /// Gives the first warning away; an empty pointer if there was none.
    [[nodiscard]] ErrorPtr release() { return std::move(kept); }

private:
    ErrorPtr kept;
};

}  // namespace QOR::AttributeContainer
