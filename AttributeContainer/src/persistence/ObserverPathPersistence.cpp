// One relation in a stream.
#include <AttributeContainer/ObserverPath.h>

#include <AttributeContainer/DataInFormat.h>
#include <AttributeContainer/DataOutFormat.h>
#include <AttributeContainer/Observer.h>
#include <AttributeContainer/ReadFromScope.h>
#include <AttributeContainer/WriteToScope.h>

#include <QOR/KeyTable.h>

#include "persistence/BlockEnd.h"

#include <utility>
#include <vector>

namespace QOR::AttributeContainer {

namespace {
using DataStructures::KeyTable;
using DataStructures::KeyTableEntry;

enum Word : std::uint64_t { BlockWord, PathWord, PriorityWord, ActionWord, EndOfTable };

const KeyTable& words() {
    static const KeyTable table{std::vector<KeyTableEntry>{{BlockWord, "ObserverPath"},
                                                           {PathWord, "Path"},
                                                           {PriorityWord, "Priority"},
                                                           {ActionWord, "Action"},
                                                           {EndOfTable, ""}}};
    return table;
}
}  // namespace

ErrorPtr ObserverPath::writeTo(std::ostream& stream,
                               std::shared_ptr<const WriteContextBase> context) const {
    if (!context) return QOR_ERROR(ContextMissing, "ObserverPath::writeTo");
    WriteToScope scope(stream, context);
    ModelOutFormat& mof = scope.getMof();
    const int format = context->getFormat();
    stream.precision(8);
    mof.startBlock("ObserverPath");
    mof.startValue("Path");
    if (const auto path = getPath()) DataOutFormat<std::string>(stream, format).put(*path);
    mof.endValue();
    mof.startValue("Priority");
    DataOutFormat<short>(stream, format).put(priority);
    mof.endValue();
    if (const auto name = getActionName()) {
        mof.startValue("Action");
        DataOutFormat<std::string>(stream, format).put(*name);
        mof.endValue();
    }
    mof.endBlock();
    if (!stream.good()) return QOR_ERROR(StreamFailed, "ObserverPath::writeTo");
    return nullptr;
}

ErrorPtr ObserverPath::readFrom(std::istream& stream,
                                std::shared_ptr<const ReadContextBase> context) {
    if (!context) return QOR_ERROR(ContextMissing, "ObserverPath::readFrom");
    ReadFromScope scope(stream, context);
    ModelInFormat& imf = scope.getImf();
    const int format = context->getFormat();
    // The "}" stays the current keyword: the caller passes it as the end of this relation.
    while (const std::string* const keyword = imf.peekKeyword()) {
        if (isBlockEnd(*keyword)) break;
        switch (words().keyToToken(*keyword)) {
            case BlockWord: imf.nextKeyword(); break;
            case PathWord: {
                const std::string path = DataInFormat<std::string>(stream, format).get();
                deactivate();
                setText(path);
                lookupObserver();  // told of the relation later, when all lists are updated
                break;
            }
            case PriorityWord: priority = DataInFormat<short>(stream, format).get(); break;
            case ActionWord: setAction(DataInFormat<std::string>(stream, format).get()); break;
            default: return ReadFromScope::fail(QOR_ERROR(ParseFailed, "ObserverPath::readFrom"));
        }
        imf.nextKeyword();
    }
    return nullptr;
}

}  // namespace QOR::AttributeContainer
