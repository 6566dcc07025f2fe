// What attributes of every type write and read beside their value.
#include <AttributeContainer/Attribute.h>
#include <AttributeContainer/DataInFormat.h>
#include <AttributeContainer/DataOutFormat.h>
#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/ModelOutFormat.h>
#include <AttributeContainer/ReadFromScope.h>
#include <AttributeContainer/WriteContext.h>

#include <QOR/FirstWarning.h>

#include "persistence/BlockEnd.h"

#include <string_view>
#include <utility>

namespace QOR::AttributeContainer {

namespace {
enum Word : std::uint64_t { NameWord = 1, ValueWord = 3, WriteWord = 4, EndOfTable = 5 };

const DataStructures::KeyTable& words() {
    static const DataStructures::KeyTable table{std::vector<DataStructures::KeyTableEntry>{
        {NameWord, "Name"}, {ValueWord, "Value"}, {WriteWord, "Write"}, {EndOfTable, ""}}};
    return table;
}
}  // namespace

const DataStructures::KeyTable Attribute::keyTable{words()};

ErrorPtr Attribute::writeTo(std::ostream& stream,
                            std::shared_ptr<const WriteContextBase> context) const {
    if (!context) return QOR_ERROR(ContextMissing, "Attribute::writeTo");
    if (context->writeOnlyMarked() && !isMarked())
        return QOR_ERROR(AttributeNotMarked, "Attribute::writeTo");
    if (hasWriteFlag() && context->getFormat() != ModelFormat::XmlV1) {
        ModelOutFormat mof(stream);
        mof.setFormat(context->getFormat());
        mof.startValue("Write");
        DataOutFormat<int>(stream, context->getFormat()).put(1);
        mof.endValue();
    }
    if (!stream.good()) return QOR_ERROR(StreamFailed, "Attribute::writeTo");
    return Observable::writeTo(stream, std::move(context));
}

ErrorPtr Attribute::readBlock(std::istream& stream,
                              const std::shared_ptr<const ReadContextBase>& context,
                              bool& wasValueSeen) {
    ModelInFormat imf(stream);
    imf.setFormat(context->getFormat());
    FirstWarning firstWarning;
    while (const std::string* const keyword = imf.peekKeyword()) {
        if (isBlockEnd(*keyword)) break;
        if (std::string_view(*keyword) == "Value") {  // nearly always: without a search
            readValueFrom(stream, context);
            wasValueSeen = true;
        } else if (auto error = firstWarning.take(Attribute::readFrom(stream, context))) {
            return ReadFromScope::fail(std::move(error));
        }
        imf.nextKeyword();
    }
    propagateEnd(imf);
    return firstWarning.release();
}

ErrorPtr Attribute::readFrom(std::istream& stream,
                             std::shared_ptr<const ReadContextBase> context) {
    if (!context) return QOR_ERROR(ContextMissing, "Attribute::readFrom");
    ModelInFormat imf(stream);
    imf.setFormat(context->getFormat());
    FirstWarning firstWarning;
    while (const std::string* const keyword = imf.peekKeyword()) {
        if (isBlockEnd(*keyword)) break;
        if (std::string_view(*keyword) == "Write") {
            DataInFormat<int>(stream, context->getFormat()).get();
            setWriteFlag(true);  // the word says it all; the number is of no account
        } else if (auto error = firstWarning.take(Observable::readFrom(stream, context))) {
            return ReadFromScope::fail(std::move(error));
        }
        imf.nextKeyword();
    }
    propagateEnd(imf);
    return firstWarning.release();
}

}  // namespace QOR::AttributeContainer
