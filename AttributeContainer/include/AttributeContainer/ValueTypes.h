// The list of all types that an attribute can hold. A new type is one row here.
#pragma once

#include <AttributeContainer/Export.h>

#include <QOR/JsonValue.h>
#include <QOR/Mat4d.h>
#include <QOR/ScanPtColor.h>
#include <QOR/Uuid.h>
#include <QOR/Vec.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace QOR::AttributeContainer {

/// A token of the list below; 54 stands for an unknown type.
enum class AttrType : std::uint32_t {};
inline constexpr std::uint32_t numAttrTypes = 54;
inline constexpr AttrType unknownAttrType{numAttrTypes};

/// A text that can be a template argument.
template <std::size_t N>
struct FixedText {
    char text[N];
    consteval FixedText(const char (&literal)[N]) { std::copy_n(literal, N, text); }
    constexpr std::string_view view() const { return {text, N - 1}; }
};

/// One type: its value type, its token, and its stream word inside "Attr<...>".
template <class T, std::uint32_t Token, FixedText Word>
struct ValueType {
    using Value = T;
    static constexpr AttrType token{Token};
    static constexpr std::string_view word = Word.view();
    static constexpr bool isAlias = false;    // has another row that names the class
    static constexpr bool isCreated = true;   // comes from tables and streams
    static constexpr bool hasKey = true;      // has a word in streams
};
/// A second token for a type that has a row of its own.
template <class T, std::uint32_t Token, FixedText Word>
struct Alias : ValueType<T, Token, Word> {
    static constexpr bool isAlias = true;
};
/// A second token that no stream word leads to.
template <class T, std::uint32_t Token, FixedText Word>
struct SilentAlias : Alias<T, Token, Word> {
    static constexpr bool hasKey = false;
};
/// A type that exists as a class but comes from no table and no stream.
template <class T, std::uint32_t Token, FixedText Word>
struct NotCreated : ValueType<T, Token, Word> {
    static constexpr bool isCreated = false;
};

/// A list of types that can be walked.
template <class... Rows>
struct TypeList {
    /// Calls `visit.operator()<Row>()` for each row in turn.
    template <class Visit>
    static constexpr void forEach(Visit visit) {
        (visit.template operator()<Rows>(), ...);
    }
};

using StringMap = std::map<std::string, std::string>;
using ScanPt = ScanPtColor<Vec3d<float>>;

// The one list, in the order in which the key table holds its rows. A list of macro calls, because
// the instances of the templates over a value type are made from it as well.
#define QOR_VALUE_TYPES(ROW)                                       \
    ROW(ValueType, int, 0, "int")                                  \
    ROW(ValueType, signed char, 1, "int8_t")                       \
    ROW(ValueType, unsigned char, 2, "uint8_t")                    \
    ROW(ValueType, short, 3, "int16_t")                            \
    ROW(ValueType, unsigned short, 4, "uint16_t")                  \
    ROW(Alias, int, 5, "int32_t")                                  \
    ROW(ValueType, unsigned int, 6, "uint32_t")                    \
    ROW(ValueType, std::int64_t, 7, "int64_t")                     \
    ROW(ValueType, std::uint64_t, 8, "uint64_t")                   \
    ROW(ValueType, double, 9, "double")                            \
    ROW(ValueType, std::string, 10, "String")                      \
    ROW(ValueType, bool, 11, "bool")                               \
    ROW(ValueType, Vec3d<double>, 12, "Vec3dd")                    \
    ROW(ValueType, Vec4d<double>, 15, "Vec4dd")                    \
    ROW(ValueType, Vec3d<float>, 13, "Vec3df")                     \
    ROW(ValueType, SVec3d<unsigned short>, 14, "SVec3us")          \
    ROW(ValueType, Vec4d<float>, 16, "Vec4df")                     \
    ROW(ValueType, SVec2d<double>, 17, "SVec2dd")                  \
    ROW(ValueType, SVec2d<float>, 18, "SVec2df")                   \
    ROW(ValueType, SVec2d<int>, 19, "SVec2i")                      \
    ROW(ValueType, SVec2d<unsigned int>, 20, "SVec2ui")            \
    ROW(ValueType, std::vector<std::string>, 21, "StringArray")    \
    ROW(ValueType, std::set<std::string>, 22, "StringSet")         \
    ROW(ValueType, StringMap, 23, "StringMap")                     \
    ROW(ValueType, Mat4d<float>, 24, "Mat4df")                     \
    ROW(ValueType, Mat4d<double>, 25, "Mat4dd")                    \
    ROW(ValueType, std::vector<double>, 26, "DVector")             \
    ROW(ValueType, std::vector<Vec3d<double>>, 27, "Vec3ddVector") \
    ROW(ValueType, std::vector<Vec4d<double>>, 29, "Vec4ddVector") \
    ROW(ValueType, std::vector<SVec2d<double>>, 31, "Vec2ddVector") \
    ROW(ValueType, std::vector<SVec2d<float>>, 32, "Vec2dfVector") \
    ROW(ValueType, std::vector<int>, 33, "IntVector")              \
    ROW(SilentAlias, std::vector<unsigned int>, 34, "UInt32Vector") \
    ROW(ValueType, std::vector<signed char>, 35, "Int8Vector")     \
    ROW(ValueType, std::vector<unsigned char>, 36, "UInt8Vector")  \
    ROW(ValueType, std::vector<short>, 37, "Int16Vector")          \
    ROW(ValueType, std::vector<unsigned short>, 38, "UInt16Vector") \
    ROW(Alias, std::vector<int>, 39, "Int32Vector")                \
    ROW(ValueType, std::vector<unsigned int>, 40, "UInt32Vector")  \
    ROW(ValueType, std::vector<std::int64_t>, 41, "Int64Vector")   \
    ROW(ValueType, std::vector<std::uint64_t>, 42, "UInt64Vector") \
    ROW(ValueType, std::vector<std::vector<Vec3d<double>>>, 30, "VecPoly3d") \
    ROW(ValueType, std::vector<Vec3d<float>>, 28, "Vec3dfVector")  \
    ROW(ValueType, std::vector<SVec2d<int>>, 43, "Vec2iVector")    \
    ROW(ValueType, std::vector<SVec2d<unsigned short>>, 44, "Vec2usVector") \
    ROW(ValueType, std::vector<Mat4d<double>>, 45, "Mat4ddVector") \
    ROW(ValueType, uuids::uuid, 46, "Uuid")                        \
    ROW(ValueType, std::vector<SVec3d<unsigned int>>, 47, "Vec3uiVector") \
    ROW(ValueType, std::set<uuids::uuid>, 48, "UuidSet")           \
    ROW(NotCreated, ScanPt, 49, "ScanPt")                          \
    ROW(NotCreated, std::vector<ScanPt>, 50, "ScanPtVector")       \
    ROW(ValueType, std::vector<uuids::uuid>, 51, "UuidVector")     \
    ROW(ValueType, std::vector<bool>, 52, "BoolVector")            \
    ROW(ValueType, JsonValue, 53, "Json::Value")

// Expands to `code` for the rows that name a class, once for each class.
#define QOR_CLASS_ROW_ValueType(code) code
#define QOR_CLASS_ROW_NotCreated(code) code
#define QOR_CLASS_ROW_Alias(code)
#define QOR_CLASS_ROW_SilentAlias(code)

namespace detail {
template <class Head, class... Rows>
struct ListBehind {
    using type = TypeList<Rows...>;
};
}  // namespace detail

#define QOR_LIST_ROW(KIND, TYPE, TOKEN, WORD) , KIND<TYPE, TOKEN, WORD>
using ValueTypes = detail::ListBehind<void QOR_VALUE_TYPES(QOR_LIST_ROW)>::type;
#undef QOR_LIST_ROW

/// The token of a value type, of its main row; not defined for a type that no attribute holds.
template <class T>
struct AttrTypeOf;

#define QOR_TOKEN_ROW(KIND, TYPE, TOKEN, WORD)                         \
    QOR_CLASS_ROW_##KIND(template <> struct AttrTypeOf<TYPE> {         \
        static constexpr AttrType value{TOKEN};                        \
    };)
QOR_VALUE_TYPES(QOR_TOKEN_ROW)
#undef QOR_TOKEN_ROW

/// A type that an attribute can hold: one that has a row.
template <class T>
concept AttrValue = requires { AttrTypeOf<T>::value; };

template <AttrValue T>
inline constexpr AttrType attrTypeOf = AttrTypeOf<T>::value;

/// The class name of the attributes of a type, as in "Attr<int>"; empty for an unknown type.
QOR_API const std::string& getAttrClassName(AttrType type);

}  // namespace QOR::AttributeContainer
