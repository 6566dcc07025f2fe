// The relations of an observable in a stream.
#include <AttributeContainer/Observable.h>

#include <AttributeContainer/DataInFormat.h>
#include <AttributeContainer/DataOutFormat.h>
#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/ReadFromScope.h>
#include <AttributeContainer/WriteToScope.h>

#include <QOR/FirstWarning.h>
#include <QOR/KeyTable.h>

#include "persistence/BlockEnd.h"

#include <utility>
#include <vector>

namespace QOR::AttributeContainer {

namespace {
using DataStructures::KeyTable;
using DataStructures::KeyTableEntry;

enum Word : std::uint64_t { ObserverWord, PathWord, PreWord, PostWord, EndOfTable };

const KeyTable& words() {
    static const KeyTable table{std::vector<KeyTableEntry>{{ObserverWord, "Observer"},
                                                           {PathWord, "ObserverPath"},
                                                           {PreWord, "PreObserver"},
                                                           {PostWord, "PostObserver"},
                                                           {EndOfTable, ""}}};
    return table;
}

// Whether a relation is for a document at all: not one that is temporary or leads nowhere any more.
bool isStored(const ObserverPath& path) { return !path.isTemporary() && !path.isGone(); }

// Whether a relation can be found again: by the path of its observer, its action and a priority.
bool isComplete(const ObserverPath& path) {
    if (!path.getAction() || path.getPriority() < 1) return false;
    const auto text = path.getPath();
    return text && !text->empty();
}

ErrorPtr writeRelations(const std::vector<const ObserverPath*>& paths, const std::string& word,
                        std::ostream& stream,
                        const std::shared_ptr<const WriteContextBase>& context,
                        FirstWarning& firstWarning) {
    WriteToScope scope(stream, context);
    const bool isText = context->getFormat() == ModelFormat::Text;
    for (const ObserverPath* const path : paths) {
        if (isText) {
            scope.getMof().startValue(word);
        } else {
            scope.getMof().startBlock(word);
        }
        if (auto error = firstWarning.take(path->writeTo(stream, context))) return error;
        if (isText) {
            scope.getMof().endValue();
        } else {
            scope.getMof().endBlock();
        }
    }
    return nullptr;
}
}  // namespace

ErrorPtr Observable::writeTo(std::ostream& stream,
                             std::shared_ptr<const WriteContextBase> context) const {
    if (!context) return QOR_ERROR(ContextMissing, "Observable::writeTo");
    if (params.empty()) return nullptr;
    if (context->getFormat() == ModelFormat::XmlV1 || context->writeOnlyMarked()) return nullptr;
    // The two lists have opposite conditions: documents hold the pre-observers that could not be
    // found again, and readers drop them; the internal ones never come that far, being temporary.
    std::vector<const ObserverPath*> pre;
    for (std::uint64_t i = 0; i < params.preObservers.size(); ++i) {
        const ObserverPath& path = params.preObservers.get(i);
        if (isStored(path) && !isComplete(path)) pre.push_back(&path);
    }
    std::vector<const ObserverPath*> post;
    for (std::uint64_t i = 0; i < params.postObservers.size(); ++i) {
        const ObserverPath& path = params.postObservers.get(i);
        if (isStored(path) && isComplete(path)) post.push_back(&path);
    }
    FirstWarning firstWarning;
    if (auto error = writeRelations(pre, "PreObserver", stream, context, firstWarning))
        return error;
    if (auto error = writeRelations(post, "PostObserver", stream, context, firstWarning))
        return error;
    return firstWarning.release();
}

ErrorPtr Observable::readFrom(std::istream& stream,
                              std::shared_ptr<const ReadContextBase> context) {
    if (!context) return QOR_ERROR(ContextMissing, "Observable::readFrom");
    ReadFromScope scope(stream, context);
    ModelInFormat& imf = scope.getImf();
    const bool isXml = context->getFormat() == ModelFormat::XmlV2;
    FirstWarning firstWarning;
    bool isPre = false;
    while (const std::string* const keyword = imf.peekKeyword()) {
        if (isBlockEnd(*keyword)) break;
        const std::uint64_t word = words().keyToToken(*keyword);
        if (word == PreWord || word == PostWord) {
            isPre = word == PreWord;
            imf.nextKeyword();
            if (isXml) imf.nextKeyword();
            continue;
        }
        if (word != PathWord)
            return ReadFromScope::fail(QOR_ERROR(ParseFailed, "Observable::readFrom"));
        auto path = std::make_unique<ObserverPath>(ObserverPath::Owner{*this},
                                                   ObserverPath::OptionalObserver{}, short{1},
                                                   ~std::uint64_t{0});
        if (auto error = firstWarning.take(path->readFrom(stream, context)))
            return ReadFromScope::fail(std::move(error));
        if (isXml) imf.nextKeyword();
        if (!path->getAction()) {
            // An unknown name costs the relation and no more.
            if (auto error =
                    firstWarning.take(QOR_ERROR(ObserverEntryDropped, "Observable::readFrom")))
                return error;
        } else {
            const AddResult added =
                isPre ? addPreObserver(std::move(path), true) : addObserver(std::move(path), true);
            if (added == AddFailed)
                return ReadFromScope::fail(QOR_ERROR(ElementUnresolved, "Observable::readFrom"));
        }
        imf.nextKeyword();
    }
    propagateEnd(imf);
    return firstWarning.release();
}

}  // namespace QOR::AttributeContainer
