// The syntax reader of the model stream: a tokenizer with a lookahead of one keyword.
#pragma once

#include <AttributeContainer/Export.h>

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>

namespace QOR::AttributeContainer {

class VersionNum;

/// Turns a model stream into a sequence of keywords; the values between them are read by their
/// codecs from the same stream.
///
/// One lives in each nested `readFrom`, on the call stack, and all of those on one stream share one
/// lookahead: a new object takes over the keyword of the innermost one that lives, and hands the
/// keyword that it ends with back. Objects should go in the reverse order of their making; one that
/// goes earlier takes the keyword it then holds with it. An object stays on the thread that made
/// it. Making one costs no allocation.
///
/// Nothing here throws on its own account. The end of the input shows as a keyword that is not
/// there, bad input as an empty or unknown keyword or as a failed stream.
class QOR_API ModelInFormat {
public:
    explicit ModelInFormat(std::istream& stream);
    ModelInFormat(const ModelInFormat&) = delete;
    ModelInFormat& operator=(const ModelInFormat&) = delete;

    /// When an exception is passing by, also clears the propagate keyword: nobody is left to
    /// whom the end of a nested block could be told, and the next read must start clean.
    ~ModelInFormat();

    /// The form of the stream, a value of `ModelFormat::Format`; `Text` at first.
    int getFormat() const { return format; }
    void setFormat(int newFormat) { format = newFormat; }

    /// Looks at the start of the stream, stores the form and returns it: 2 if the first two lines
    /// are those that both XML writers put there, else 0. A first line that begins with `<` is
    /// consumed in any case, and so is the second one if the first is the XML header.
    int determineFormat();

    /// Reads the header text. In the XML form `text` becomes empty, since strings are not
    /// delivered there, and the lines up to the version, or to the blocks, are passed.
    void readHeader(std::string& text);

    /// Reads one version value.
    void readVersion(VersionNum& v);

    /// Reads the root model version in `Text`. Whatever stood there, a version that is not named
    /// "1.0" is then replaced by the neutral one: named "1.0", with all numbers 0.
    void readRootModelVersion(VersionNum& v);

    /// Reads the root start tag in the XML form, from at most 100 characters of a line.
    /// \return whether it was there, ignoring case; true in the other forms, at no cost.
    bool readZelkStart();

    /// Steps over the closing line in the XML form. \return true
    bool readZelkEnd();

    /// Moves on to the next keyword: the thread's propagate keyword if one is set and not empty,
    /// which clears it, otherwise the next one of the stream.
    void nextKeyword();

    /// The current keyword, fetched if none is held; none at the end of the stream.
    std::optional<const std::string> getKeyword();

    /// The same without a copy: null for none. The pointer lasts until the next call of any
    /// operation, and until another reader of the same stream is made.
    const std::string* peekKeyword();

    /// One byte, 0 to 255, of the part of the keyword that is left after earlier raw reads, or
    /// otherwise of the stream; the stream's end-of-file value at the end. The byte stays where
    /// it is unless `consume`.
    int rawRead(bool consume);

    /// Takes one character from the stream and drops it.
    void readBeforeBuf();

    /// Takes characters up to and with the next line feed, drops the keyword.
    /// \return whether the stream is still good
    bool skipRestOfLine();

    /// Takes characters up to and with the next `}`, wherever it stands: nesting and strings do
    /// not count. Drops the keyword. \return whether the stream is still good
    bool skipToEndOfBlock();

    /// Stores the keyword that the thread's next `nextKeyword` shall give, on whatever stream; an
    /// empty optional clears it. A reader that stopped at a "}" passes it to its caller so.
    static void setPropagateKeyword(std::optional<const std::string> text);

    /// Clears the propagate keyword of the thread. A host calls it ahead of each document: a read
    /// that ended at a "}" too many has left that one behind, and the next read would end at it.
    static void cleanPropagateKeyword();

protected:
    /// Marks the characters of the current keyword before `index` as taken, for readers that look
    /// into a keyword by `rawRead`. `getKeyword` then gives only the rest.
    void setPosition(std::int32_t index) { position = index; }

private:
    struct ReadingThread;

    void swapLookahead(ModelInFormat& other);
    void dropKeyword();
    bool takePropagateKeyword();
    bool readTextKeyword();
    bool readXmlKeyword();
    bool readXmlTag();

    static ReadingThread& thisThread();

    std::istream& stream;
    ReadingThread& thread;
    ModelInFormat* outer;  // the next one of the thread's live objects, or null
    // Made with the first keyword and handed on with the lookahead, so that a whole read makes one.
    std::unique_ptr<std::string> keyword;
    bool hasKeyword = false;
    std::int32_t position = -1;  // -1: a keyword must be fetched; above 0: where its rest begins
    std::int32_t format = 0;
};

}  // namespace QOR::AttributeContainer
