// The syntax writer of the model stream: how a block opens and closes and how a value is framed.
#pragma once

#include <AttributeContainer/Export.h>

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace QOR::AttributeContainer {

class Version;

/// Writes the frames of blocks and values in the form that `setFormat` chose (values of
/// `ModelFormat::Format`, `Text` at first). It knows nothing of attributes and containers.
///
/// It is made on the stack for one `writeTo` and must not outlive its stream. A block is closed by
/// the object that opened it. All writing operations return the object itself and report nothing:
/// a failing stream sets its state. Every line feed is followed by a flush. Making one costs no
/// allocation.
class QOR_API ModelOutFormat {
public:
    explicit ModelOutFormat(std::ostream& target) : stream(target) {}
    ModelOutFormat(const ModelOutFormat&) = delete;
    ModelOutFormat& operator=(const ModelOutFormat&) = delete;

    int getFormat() const { return format; }
    void setFormat(int newFormat) { format = newFormat; }

    /// The stream, for the values between `startValue` and `endValue`.
    std::ostream& output() { return stream; }

    /// `Name { ` on a line of its own; `<Name>` in the XML forms.
    ModelOutFormat& startBlock(std::string_view name);

    /// An element with attributes, which the caller has put into the form `key="value"`. In the
    /// first XML form the line stays open, for a value between the tags. Writes nothing in `Text`,
    /// though the `endBlock` after it does.
    ModelOutFormat& startBlock(std::string_view name, std::string_view attributes);

    /// The block of an attribute, from its class name, as in "Attr<int>". The XML forms write an
    /// element `Attr` with the type in an attribute, which keeps the closing bracket of the name:
    /// `<Attr type="int>">`.
    ModelOutFormat& startAttributeBlock(const std::string& attrClassName);

    /// A block that states the number of its elements: before the brace if `sizeInName`, else
    /// behind it. The XML forms have it as the attribute `value` either way.
    ModelOutFormat& startBlockWithSize(std::string_view name, std::uint64_t size, bool sizeInName);

    /// Closes the innermost block that this object opened.
    ModelOutFormat& endBlock();

    /// `Name ` at the start of a line; `<Name value="` in the XML forms.
    ModelOutFormat& startValue(std::string_view name);

    /// A value element with further attributes before the value. Writes nothing in `Text`.
    ModelOutFormat& startValue(std::string_view name, std::string_view attributes);

    /// As `startValue`, with the name as a quoted string value in `Text`; there it also sets the
    /// stream's precision to 8.
    ModelOutFormat& startValueAsString(const std::string& name);

    /// Nothing in `Text`; the end of the element in the XML forms.
    ModelOutFormat& endValue();

    /// The start of a stream without a version. Sets the stream's precision to 8, the standing
    /// precision of all numbers of the model.
    ModelOutFormat& writeHeader(const std::string& text);

    /// The start of a stream with the format version of `versions`, for which most hosts pass the
    /// global `version`, and, in `Text` if `writeRootModelVersion`, its root model version. Sets
    /// the stream's precision to 8.
    ModelOutFormat& writeHeader(const std::string& text, const Version& versions,
                                bool writeRootModelVersion);

    /// The end of a stream: the closing root tag in the XML forms, nothing in `Text`.
    ModelOutFormat& writeFooter();

    /// Writes `text` with the five characters `"&'<>` replaced by their XML entities. Every other
    /// byte goes through untouched; nothing is validated.
    static void encodeXMLEntities(std::ostream& stream, std::string_view text);

private:
    std::ostream& stream;
    std::vector<std::string> openBlocks;  // XML only, innermost last
    int format = 0;
};

}  // namespace QOR::AttributeContainer
