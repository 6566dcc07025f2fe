#include <AttributeContainer/XMLSerialization.h>

#include <AttributeContainer/AttrDefinition.h>
#include <AttributeContainer/ModelFormat.h>
#include <AttributeContainer/Version.h>
#include <AttributeContainer/WriteToScope.h>

#include <QOR/FirstWarning.h>

#include <cstdint>
#include <ostream>
#include <string>
#include <utility>

namespace QOR::AttributeContainer {

namespace {
constexpr auto rootWord = "Root";

std::string xmlAttribute(const char* key, const std::string& value) {
    return std::string(key) + "=\"" + value + '"';
}

// The type without the "Attr<" and ">" around it.
std::string typeOf(const Attribute& attribute) {
    const std::string& className = attribute.getClassName();
    constexpr std::size_t sizeAround = 6;
    return className.size() < sizeAround ? std::string{}
                                         : className.substr(5, className.size() - sizeAround);
}

/// One export: a stream and the options that hold for all of it.
class Exporter {
public:
    Exporter(std::ostream& stream, std::shared_ptr<WriteContextBase> context)
        : stream(stream), context(std::move(context)) {}

    ErrorPtr writeContainer(AttrContainer& container, const std::string& fieldName);

private:
    ErrorPtr writeFields(AttrContainer& container);
    ErrorPtr writeAttributes(const AttrContainer& container, ModelOutFormat& mof);
    bool isLeftOut(const AttrContainer& container, const Attribute& attribute,
                   std::uint64_t token) const;

    std::ostream& stream;
    std::shared_ptr<WriteContextBase> context;
};

ErrorPtr Exporter::writeContainer(AttrContainer& container, const std::string& fieldName) {
    if (context->writeOnlyMarkedObjects()) {
        const auto first = container.getAttribute(0).lock();
        if (!first || !first->isMarked()) return nullptr;
    }
    context->setFormat(ModelFormat::XmlV1);
    WriteToScope scope(stream, context);
    ModelOutFormat& mof = scope.getMof();
    FirstWarning firstWarning;
    std::string about = xmlAttribute("type", container.getClassName());
    if (!fieldName.empty()) about += ' ' + xmlAttribute("fieldname", fieldName);
    mof.startBlock(container.getName(), about);
    mof.startBlock("fields");
    if (auto error = firstWarning.take(writeFields(container))) return error;
    mof.endBlock();
    mof.startBlock("attrs");
    if (auto error = firstWarning.take(writeAttributes(container, mof))) return error;
    mof.endBlock();
    mof.endBlock();
    return firstWarning.release();
}

ErrorPtr Exporter::writeFields(AttrContainer& container) {
    FirstWarning firstWarning;
    for (std::uint64_t token = 0; token < container.getNumFields(); ++token) {
        const auto field = container.getField(token).lock();
        if (!field) continue;
        const std::string name = container.getFieldName(token).value_or(std::string{});
        if (auto error = firstWarning.take(writeContainer(*field, name))) return error;
    }
    return firstWarning.release();
}

ErrorPtr Exporter::writeAttributes(const AttrContainer& container, ModelOutFormat& mof) {
    FirstWarning firstWarning;
    for (std::uint64_t token = 0; token < container.getNumAttributes(); ++token) {
        const auto attribute = container.getAttribute(token).lock();
        if (!attribute || isLeftOut(container, *attribute, token)) continue;
        const auto name = container.getAttrName(token);
        if (!name || name->empty()) continue;
        mof.startBlock(*name, xmlAttribute("type", typeOf(*attribute)));
        if (auto error = firstWarning.take(attribute->writeTo(stream, context))) return error;
        mof.endBlock();
    }
    return firstWarning.release();
}

bool Exporter::isLeftOut(const AttrContainer& container, const Attribute& attribute,
                         std::uint64_t token) const {
    if ((container.getAttrCategory(token) & AttrDefinition::notPersistent) != 0) return true;
    return context->writeOnlyMarked() && !attribute.isMarked();
}
}  // namespace

ErrorPtr XMLSerialization::to(std::ostream& stream, AttrContainer& container,
                              std::shared_ptr<WriteContextBase> context) {
    if (!context) return QOR_ERROR(ContextMissing, "XMLSerialization::to");
    stream << ModelFormat::XML_HEADER << '\n';
    // The 0 is the number of this form of document, and none of the model stream's.
    stream << '<' << rootWord << ' '
           << xmlAttribute("version", version.getFormatVersion()->getReleaseNumbers())
           << " format=\"0\">\n";
    ErrorPtr result = Exporter(stream, std::move(context)).writeContainer(container, {});
    stream << "</" << rootWord << '>';
    if (result && !result->isWarning()) return result;
    if (!stream.good()) return QOR_ERROR(StreamFailed, "XMLSerialization::to");
    return result;
}

}  // namespace QOR::AttributeContainer
