#include "Classes.h"

#include <AttributeContainer/AttributeContainer.h>

#include <algorithm>
#include <array>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace class_tables {

namespace {

using namespace QOR::AttributeContainer;

// The base that a class names in its declaration; those without the block of members say it here.
template <class X, class B, FixedText Name>
std::type_identity<B> baseIn(const ContainerClass<X, B, Name>*);
template <class X> struct Base : decltype(baseIn<X>(static_cast<X*>(nullptr))) {};
template <> struct Base<FallbackObject> : std::type_identity<Object> {};

std::string valueTypeOf(AttrType type) {
    static const std::array<std::string, numAttrTypes> names = [] {
        std::array<std::string, numAttrTypes> all;
#define QOR_NAME_ROW(KIND, TYPE, TOKEN, WORD) all[TOKEN] = #TYPE;
        QOR_VALUE_TYPES(QOR_NAME_ROW)
#undef QOR_NAME_ROW
        return all;
    }();
    return names.at(static_cast<std::size_t>(type));
}

std::string textOf(const Attribute& attribute) {
    if (const auto* const number = dynamic_cast<const Attr<double>*>(&attribute)) {
        std::ostringstream text;  // the plain text of a number is rounded
        DataOutFormat<double>(text, ModelFormat::Text).put(number->get());
        return std::move(text).str();
    }
    if (const auto* const text = dynamic_cast<const Attr<std::string>*>(&attribute))
        return text->get().empty() ? "empty" : '"' + text->get() + '"';
    if (const auto* const matrix = dynamic_cast<const Attr<QOR::Mat4d<double>>*>(&attribute))
        if (matrix->get() == QOR::Mat4d<double>::identity()) return "identity";
    if (const auto* const id = dynamic_cast<const Attr<QOR::uuids::uuid>*>(&attribute))
        if (id->get().is_nil()) return "nil";
    return attribute.getValueString();
}

// The value that an attribute has in a new object. `other` is another new object of the class.
std::string defaultOf(const Attribute& attribute, const AttrContainer& other) {
    const auto same = other.getAttribute(attribute.getToken()).lock();
    return same && *same == attribute ? textOf(attribute) : "made anew for each object";
}

std::vector<AttributeRow> attributesOf(const AttrContainer& object, const AttrContainer& other,
                                       std::uint64_t first, std::uint64_t last) {
    std::vector<AttributeRow> rows;
    for (std::uint64_t token = first; token != last + 1; ++token) {
        const AttrDefinition* const definition = object.getAttrDefinition(token);
        const auto attribute = object.getAttribute(token).lock();
        if (!definition || !attribute)
            throw std::logic_error(object.getClassName() + " has no row " + std::to_string(token));
        // A name begins as the name of the class, which is no default of one row.
        rows.push_back({token, definition->name, valueTypeOf(definition->type),
                        attribute->getClassName(),
                        token == 0 ? "the name of the class" : defaultOf(*attribute, other),
                        definition->category});
    }
    return rows;
}

std::vector<FieldRow> fieldsOf(const AttrContainer& object, std::uint64_t first,
                               std::uint64_t last) {
    std::vector<FieldRow> rows;
    for (std::uint64_t token = first; token != last + 1; ++token) {
        const auto field = object.getField(token).lock();
        rows.push_back({token, object.getFieldName(token).value_or(std::string{}),
                        field ? field->getClassName() : std::string{}});
    }
    return rows;
}

// The values of a base that are others in a new object of the class. Names have their own line.
template <class X, class B> std::vector<OtherStart> otherStartsOf(const X& object, const X& other) {
    std::vector<OtherStart> starts;
    const auto base = B::create();
    for (std::uint64_t token = 1; token != B::lastAttrToken() + 1; ++token) {
        const Attribute& attribute = *object.getAttribute(token).lock();
        const bool isMadeAnew = *other.getAttribute(token).lock() != attribute;
        if (!isMadeAnew && *base->getAttribute(token).lock() != attribute)
            starts.push_back({attribute.getName(), textOf(attribute)});
    }
    return starts;
}

template <class X> ClassTable tableOf() {
    const auto object = X::create();
    const auto other = X::create();
    ClassTable table{X::getStaticClassName(),
                     {},
                     object->getName(),
                     FieldFactory::the()->createField(X::getStaticClassName()) != nullptr,
                     {},
                     {},
                     {}};
    if constexpr (std::is_same_v<X, AttrContainer>) {
        table.attributes = attributesOf(*object, *other, 0, X::lastAttrToken());
    } else {
        using B = typename Base<X>::type;
        table.base = B::getStaticClassName();
        table.attributes =
            attributesOf(*object, *other, B::lastAttrToken() + 1, X::lastAttrToken());
        table.fields = fieldsOf(*object, B::lastFieldToken() + 1, X::lastFieldToken());
        table.otherStarts = otherStartsOf<X, B>(*object, *other);
    }
    return table;
}

template <class... Classes> std::vector<ClassTable> tablesOf() { return {tableOf<Classes>()...}; }

}  // namespace

std::vector<ClassTable> collectClasses() {
    auto tables =
        tablesOf<AttrContainer, ArrayContainer, UnknownAttrContainer, ScanProperties,
                 PictureColorPropertiesField, HDRParameterField, TMOLinearField, TMOReinhard02Field,
                 TMOEasyHDRField, Object, Object2d, Object3d, Point3d, MarkerBase, Transform,
                 Container, GenericBinaryObjectV2, Picture, PanoramaPicture, FallbackObject>();
    for (const std::string& name : FieldFactory::the()->getAllRegisteredFields()) {
        if (std::ranges::find(tables, name, &ClassTable::name) == tables.end())
            throw std::logic_error("the class " + name + " is missing in the list of classes");
    }
    return tables;
}

}  // namespace class_tables
