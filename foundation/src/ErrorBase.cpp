#include <QOR/ErrorBase.h>

namespace QOR::ErrorHandling {

ErrorBase::ErrorBase(const char* fileName, int lineNumber)
    : file(fileName ? fileName : "unknown file"), line(lineNumber), id(uuids::uuid::generate()) {}

ErrorBase::ErrorBase(const ErrorBase&) = default;

ErrorBase::~ErrorBase() = default;

std::string ErrorBase::getLocation() const { return file + ":" + std::to_string(line); }

std::string ErrorBase::getUuid() const { return id.toString(); }

void ErrorBase::setDescription(const std::string& text) { description = text; }

std::optional<std::string> ErrorBase::getDescription() const { return description; }

void ErrorBase::addInfos(const Infos& newInfos) {
    for (const auto& [key, value] : newInfos) infos.insert_or_assign(key, value);
}

const ErrorBase::Infos& ErrorBase::getInfos() const { return infos; }

void ErrorBase::addReason(const ErrorBase& reason) { reasons.push_back(reason.copy()); }

const ErrorBase::Reasons& ErrorBase::getReasons() const { return reasons; }

}  // namespace QOR::ErrorHandling
