#include <QOR/ErrorCode.h>

#include <QOR/Logger.h>

namespace QOR::AttributeContainer {

bool isWarning(const ErrorCode& code) {
    switch (code) {
        case ErrorCode::ObserverEntryDropped:
        case ErrorCode::ElementSkipped:
        case ErrorCode::AttributeNotMarked:
        case ErrorCode::UnknownAttributeType:
        case ErrorCode::ObjectNotCreated: return true;
        default: return false;
    }
}

ErrorPtr makeError(const char* file, int line, ErrorCode code, const char* function) {
    auto error = std::make_unique<ErrorHandling::ErrorWithCode<ErrorCode>>(file, line, code);
    auto message = "Error " + error->getUuid() + ": " + error->getLocation();
    if (const auto description = error->getDescription())
        message += " Description: '" + *description + "'";
    Logger::appendLogMsgExt(message, 1, file, line, function);
    return error;
}

ErrorPtr addErrorInfo(ErrorPtr&& error, std::pair<const char*, std::string> info) {
    if (error) error->addInfos({{info.first, std::move(info.second)}});
    return std::move(error);
}

}  // namespace QOR::AttributeContainer
