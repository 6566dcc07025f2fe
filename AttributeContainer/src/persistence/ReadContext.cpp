#include <AttributeContainer/ReadContext.h>

#include <AttributeContainer/ReferenceDictionary.h>

#include <utility>

namespace QOR::AttributeContainer {

ReadContextBase::ReadContextBase() = default;
ReadContextBase::~ReadContextBase() = default;

void ReadContextBase::setReferenceDictionary(std::unique_ptr<ReferenceDictionary> dictionary) {
    referenceDictionary = std::move(dictionary);
}

void ReadContextBase::idle() const {}

std::shared_ptr<Object> ReadContextBase::createObject(const std::string&) { return nullptr; }

}  // namespace QOR::AttributeContainer
