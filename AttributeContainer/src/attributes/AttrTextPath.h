// The bodies of the typed attributes that go through the text of a value.
#pragma once

#include <AttributeContainer/Attr.h>
#include <AttributeContainer/DataInFormat.h>
#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/ModelInFormat.h>
#include <AttributeContainer/ReadContext.h>

#include "attributes/AttrImpl.h"
#include "persistence/ValueText.h"

#include <sstream>
#include <utility>

namespace QOR::AttributeContainer {

template <AttrValue T>
void Attr<T>::assignFrom(const std::string& text, const std::shared_ptr<ObservingObject>& initiator,
                         ResultPromise& preResults, ResultPromise& postResults) {
    if constexpr (std::same_as<T, std::string>) {
        set(text, initiator, preResults, postResults);
    } else {
        const auto self = weak_from_this().lock();  // observers may let go of this attribute
        const bool pending = isCachedAttributePending();
        ResultPromise pre = std::move(preResults);
        ResultPromise post = std::move(postResults);
        // Observers are asked also where observing is blocked, and their refusal is not looked at:
        // this road is for values that are already decided.
        askOnly(initiator, pre);
        if (pending) takeCachedAttribute();
        std::istringstream stream(text);
        store(DataInFormat<T>(stream, ModelFormat::Text).get());
        runPostHalf(initiator, post);
    }
}

template <AttrValue T>
std::string Attr<T>::getValueString() const {
    return valueText(get());
}

template <AttrValue T>
void Attr<T>::readValueFrom(std::istream& stream, std::shared_ptr<const ReadContextBase> context) {
    const ModelInFormat imf(stream);  // sees to the propagate keyword where a number is malformed
    DataInFormat<T> in(stream, context ? context->getFormat() : int{ModelFormat::Text});
    set(in.get());
}

}  // namespace QOR::AttributeContainer
