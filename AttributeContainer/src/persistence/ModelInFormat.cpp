#include <AttributeContainer/ModelInFormat.h>

#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/ThreadWord.h>

#include <exception>
#include <istream>
#include <limits>
#include <utility>

namespace QOR::AttributeContainer {

// The state of a thread that reads. Every attribute of a stream has a reader of its own, so all of
// this must be at hand without a constructor.
struct ModelInFormat::ReadingThread {
    ModelInFormat* innermost = nullptr;  // the live readers, chained by `outer`
    bool hasPropagateKeyword = false;
    bool isBrace = false;  // the propagate keyword is a "}", as it nearly always is
    int exceptionsWhenStored = 0;  // how many were in flight when the propagate keyword was stored
};

namespace {

// Set apart for the same reason: touched only where the propagate keyword is an unusual one.
std::string& propagateKeyword() {
    static thread_local std::string keyword;
    return keyword;
}

}  // namespace

ModelInFormat::ReadingThread& ModelInFormat::thisThread() {
    QOR_THREAD_WORD static ReadingThread* known = nullptr;
    if (!known) {
        static constinit thread_local ReadingThread thread;
        known = &thread;
    }
    return *known;
}

ModelInFormat::ModelInFormat(std::istream& source)
    : stream(source), thread(thisThread()), outer(std::exchange(thread.innermost, this)) {
    if (outer && &outer->stream == &stream) swapLookahead(*outer);
}

ModelInFormat::~ModelInFormat() {
    if (thread.hasPropagateKeyword && std::uncaught_exceptions() > thread.exceptionsWhenStored) {
        cleanPropagateKeyword();
    }

    // The chain is followed rather than trusted, so that a reader which does not end in its turn
    // leaves no dangling link.
    ModelInFormat** link = &thread.innermost;
    while (*link && *link != this) link = &(*link)->outer;
    if (*link) *link = outer;

    const bool inTurn = link == &thread.innermost;
    if (inTurn && outer && &outer->stream == &stream) swapLookahead(*outer);
}

void ModelInFormat::swapLookahead(ModelInFormat& other) {
    keyword.swap(other.keyword);
    std::swap(hasKeyword, other.hasKeyword);
    std::swap(position, other.position);
}

void ModelInFormat::dropKeyword() {
    if (keyword) keyword->clear();
    hasKeyword = false;
    position = -1;
}

bool ModelInFormat::takePropagateKeyword() {
    if (!thread.hasPropagateKeyword) return false;
    if (thread.isBrace) {
        keyword->assign(1, ModelFormat::END_OF_BLOCK);
        thread.hasPropagateKeyword = false;
        return true;
    }
    if (propagateKeyword().empty()) return false;
    keyword->swap(propagateKeyword());
    cleanPropagateKeyword();
    return true;
}

void ModelInFormat::nextKeyword() {
    dropKeyword();
    if (!keyword) keyword = std::make_unique<std::string>();
    if (!takePropagateKeyword()) {
        const bool found = format == ModelFormat::XmlV2 ? readXmlKeyword() : readTextKeyword();
        // A word that the end of the input cuts off may not be whole, so it does not count.
        if (!found || !stream.good()) return;
    }
    hasKeyword = true;
    position = 0;
}

const std::string* ModelInFormat::peekKeyword() {
    if (position < 0) nextKeyword();
    if (!hasKeyword) return nullptr;
    if (position > 0) {
        keyword->erase(0, static_cast<std::size_t>(position));
        position = 0;
    }
    return keyword.get();
}

std::optional<const std::string> ModelInFormat::getKeyword() {
    if (const auto* current = peekKeyword()) return *current;
    return std::nullopt;
}

int ModelInFormat::rawRead(bool consume) {
    const auto index = static_cast<std::size_t>(position);
    if (position <= 0 || !hasKeyword || index >= keyword->size()) {
        return consume ? stream.get() : stream.peek();
    }
    // Keywords are bytes, of UTF-8 or of whatever the writer had; each goes out as it came in, in
    // the form that the stream itself gives bytes.
    const int byte = std::char_traits<char>::to_int_type((*keyword)[index]);
    if (consume && ++position == static_cast<std::int32_t>(keyword->size())) dropKeyword();
    return byte;
}

void ModelInFormat::readBeforeBuf() { stream.get(); }

bool ModelInFormat::skipRestOfLine() {
    stream.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    dropKeyword();
    return stream.good();
}

bool ModelInFormat::skipToEndOfBlock() {
    stream.ignore(std::numeric_limits<std::streamsize>::max(), '}');
    dropKeyword();
    return stream.good();
}

void ModelInFormat::setPropagateKeyword(std::optional<const std::string> text) {
    if (!text) {
        cleanPropagateKeyword();
        return;
    }
    ReadingThread& thread = thisThread();
    thread.isBrace = *text == ModelFormat::END_OF_BLOCK_STR;
    if (!thread.isBrace) propagateKeyword() = *text;
    thread.hasPropagateKeyword = true;
    thread.exceptionsWhenStored = std::uncaught_exceptions();
}

void ModelInFormat::cleanPropagateKeyword() {
    ReadingThread& thread = thisThread();
    if (!thread.hasPropagateKeyword) return;
    if (!thread.isBrace) propagateKeyword().clear();
    thread.hasPropagateKeyword = false;
}

}  // namespace QOR::AttributeContainer
