#include "model/ErrorText.h"

namespace qormodel {

using QOR::AttributeContainer::ErrorCode;

namespace {
const char* phraseOf(ErrorCode code) {
    switch (code) {
        case ErrorCode::ParseFailed: return "cannot be interpreted: expected a block of a model";
        case ErrorCode::StreamFailed: return "the stream failed";
        case ErrorCode::ContextMissing: return "the context of the stream is missing";
        case ErrorCode::ObserverEntryDropped:
            return "a relation cannot be kept: expected the name of a known action";
        case ErrorCode::ElementUnresolved: return "a container cannot be attached";
        case ErrorCode::ElementSkipped: return "an element was not taken over";
        case ErrorCode::AttributeNotMarked: return "the attribute is not marked";
        case ErrorCode::AttributeNotCreated:
            return "an attribute cannot be made: expected a known type";
        case ErrorCode::UnknownAttributeType: return "the type of the attribute is not known";
        case ErrorCode::InvalidName: return "the name is not valid";
        case ErrorCode::WriteProtected: return "the attribute is write-protected";
        case ErrorCode::ReadNotSupported: return "cannot be read";
        case ErrorCode::ObjectNotCreated: return "the class of the object is not known";
        case ErrorCode::ChildNotCreated:
            return "a child cannot be made: expected its class and its name in quotes";
        case ErrorCode::ObjectBlockBroken:
            return "the block of the object has no regular end: expected }";
    }
    return "unknown error";
}
}  // namespace

std::string textOf(const QOR::ErrorHandling::ErrorWithCode<ErrorCode>& error) {
    std::string text = phraseOf(error.getCode());
    if (const auto description = error.getDescription()) text += " (" + *description + ')';
    return text;
}

std::string textOfNoName(const std::string& text) {
    return '"' + text + "\" is no name: letters, digits, '_', '-' and '.' are";
}

}  // namespace qormodel
