// The library's error codes, and how an error is made, logged and told apart.
#pragma once

#include <QOR/ErrorBase.h>
#include <QOR/Export.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace QOR::AttributeContainer {

/// What went wrong. The numbers are stable.
enum class QOR_API ErrorCode : std::uint32_t {
    ParseFailed = 0,           ///< stream content that cannot be interpreted
    StreamFailed = 1,          ///< the stream is not good after the operation
    ContextMissing = 2,        ///< no context was passed to a read or write
    ObserverEntryDropped = 3,  ///< warning: an observer entry of the stream could not be kept
    ElementUnresolved = 4,     ///< a referenced element is missing or could not be attached
    ElementSkipped = 5,        ///< warning: a stream element was not taken over
    AttributeNotMarked = 6,    ///< warning: only marked attributes are written, and this is none
    AttributeNotCreated = 7,   ///< no attribute could be made for one of the stream
    UnknownAttributeType = 8,  ///< warning: the type keyword of a stream attribute is not known
    InvalidName = 9,           ///< a name is not allowed; the info "CheckedName" holds it
    WriteProtected = 10,       ///< a write-protected attribute was to be changed
    ReadNotSupported = 11,     ///< the class can be written only
    ObjectNotCreated = 12,     ///< warning: an object of the stream could not be made
    ChildNotCreated = 13,      ///< there is no object to read a child into
    ObjectBlockBroken = 14     ///< an object's block did not come to its regular end
};

/// True for the codes that do not end a read.
QOR_API bool isWarning(const ErrorCode& code);

/// The name of the code as it stands above, as in "ParseFailed", for logs and messages. Empty for a
/// number that is none of them. The text lasts as long as the library is loaded.
QOR_API std::string_view getErrorCodeName(ErrorCode code);

/// The result of what can fail: the error, or an empty pointer for success.
using ErrorPtr = std::unique_ptr<ErrorHandling::ErrorWithCode<ErrorCode>>;

/// Makes an error and logs it at level 1 as "Error <uuid>: <location>". `QOR_ERROR` fills in the
/// place.
/// \param function the full name of the operation that fails.
/// \return the error, never an empty pointer. What is set on it later does not reach the log.
[[nodiscard]] QOR_API ErrorPtr makeError(const char* file, int line, ErrorCode code,
                                         const char* function);

/// Adds one text to the infos of an error and hands the error on, so that calls chain. An empty
/// `error` goes through untouched.
[[nodiscard]] QOR_API ErrorPtr addErrorInfo(ErrorPtr&& error,
                                            std::pair<const char*, std::string> info);

}  // namespace QOR::AttributeContainer

/// Makes and logs an error with the place of the call: QOR_ERROR(InvalidName,
/// "AttrContainer::checkName"). The function is named as seen from the namespace
/// QOR::AttributeContainer.
#define QOR_ERROR(CODE, FUNCTION)                                                    \
    ::QOR::AttributeContainer::makeError(__FILE__, __LINE__,                         \
                                         ::QOR::AttributeContainer::ErrorCode::CODE, \
                                         "QOR::AttributeContainer::" FUNCTION)
