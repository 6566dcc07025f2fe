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

std::string_view getErrorCodeName(ErrorCode code) {
    switch (code) {
        case ErrorCode::ParseFailed: return "ParseFailed";
        case ErrorCode::StreamFailed: return "StreamFailed";
        case ErrorCode::ContextMissing: return "ContextMissing";
        case ErrorCode::ObserverEntryDropped: return "ObserverEntryDropped";
        case ErrorCode::ElementUnresolved: return "ElementUnresolved";
        case ErrorCode::ElementSkipped: return "ElementSkipped";
        case ErrorCode::AttributeNotMarked: return "AttributeNotMarked";
        case ErrorCode::AttributeNotCreated: return "AttributeNotCreated";
        case ErrorCode::UnknownAttributeType: return "UnknownAttributeType";
        case ErrorCode::InvalidName: return "InvalidName";
        case ErrorCode::WriteProtected: return "WriteProtected";
        case ErrorCode::ReadNotSupported: return "ReadNotSupported";
        case ErrorCode::ObjectNotCreated: return "ObjectNotCreated";
        case ErrorCode::ChildNotCreated: return "ChildNotCreated";
        case ErrorCode::ObjectBlockBroken: return "ObjectBlockBroken";
    }
    return {};
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
