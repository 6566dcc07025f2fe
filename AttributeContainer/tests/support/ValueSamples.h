// One value of every type that an attribute can hold, with what is stored of it.
#pragma once

#include <AttributeContainer/ValueTypes.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>

namespace QOR::AttributeContainer::Testing {

/// What the tests know of a type: the token and the word of its class, a value that is not the
/// default one, and the text of that value in a stream.
template <class T>
struct Sample;

#define QOR_SAMPLE(TOKEN, WORD, TEXT, TYPE, ...)                              \
    template <>                                                              \
    struct Sample<TYPE> {                                                    \
        static constexpr std::uint32_t token = TOKEN;                        \
        static constexpr const char* className = "Attr<" WORD ">";           \
        static constexpr const char* text = TEXT;                            \
        static TYPE value() { return __VA_ARGS__; }                    \
    }

inline uuids::uuid sampleUuid(const char* text = "00112233-4455-6677-8899-aabbccddeeff") {
    return *uuids::uuid::parse(text);
}

template <class T>
Mat4d<T> sampleMatrix() {
    Mat4d<T> matrix;
    for (std::size_t i = 0; i < 16; ++i) matrix[i] = static_cast<T>(i + 1);
    return matrix;
}
#define QOR_SAMPLE_MATRIX "1 2 3 4  5 6 7 8  9 10 11 12  13 14 15 16  "

inline ScanPt samplePoint() {
    return {{1.5f, 2, 3}, {10, 20, 30, 255}};
}

QOR_SAMPLE(0, "int", "-5", int, -5);
QOR_SAMPLE(1, "int8_t", "-7", signed char, -7);
QOR_SAMPLE(2, "uint8_t", "200", unsigned char, 200);
QOR_SAMPLE(3, "int16_t", "-300", short, -300);
QOR_SAMPLE(4, "uint16_t", "60000", unsigned short, 60000);
QOR_SAMPLE(6, "uint32_t", "4000000000", unsigned int, 4000000000u);
QOR_SAMPLE(7, "int64_t", "-9000000000000000000", std::int64_t, -9000000000000000000);
QOR_SAMPLE(8, "uint64_t", "18000000000000000000", std::uint64_t, 18000000000000000000u);
QOR_SAMPLE(9, "double", "-2.5", double, -2.5);
QOR_SAMPLE(10, "String", R"("a \"b\"\n")", std::string, "a \"b\"\n");
QOR_SAMPLE(11, "bool", "true", bool, true);
QOR_SAMPLE(12, "Vec3dd", "1.5 -2 0", Vec3d<double>, {1.5, -2, 0});
QOR_SAMPLE(13, "Vec3df", "1.5 2 0.25", Vec3d<float>, {1.5f, 2, 0.25f});
QOR_SAMPLE(14, "SVec3us", "1 2 65535", SVec3d<unsigned short>, {1, 2, 65535});
QOR_SAMPLE(15, "Vec4dd", "1 -2 3.5 0", Vec4d<double>, {1, -2, 3.5, 0});
QOR_SAMPLE(16, "Vec4df", "1 2 3.5 4", Vec4d<float>, {1, 2, 3.5f, 4});
QOR_SAMPLE(17, "SVec2dd", "-1.5 0", SVec2d<double>, {-1.5, 0});
QOR_SAMPLE(18, "SVec2df", "1.5 2", SVec2d<float>, {1.5f, 2});
QOR_SAMPLE(19, "SVec2i", "-1 2 ", SVec2d<int>, {-1, 2});
QOR_SAMPLE(20, "SVec2ui", "1 4000000000 ", SVec2d<unsigned int>, {1, 4000000000u});
QOR_SAMPLE(21, "StringArray", R"(3 "a b" "" "c")", std::vector<std::string>, {"a b", "", "c"});
QOR_SAMPLE(22, "StringSet", R"(2 "a" "b")", std::set<std::string>, {"b", "a"});
QOR_SAMPLE(23, "StringMap", R"(2 "j"=>"" "k"=>"v w")", StringMap, {{"k", "v w"}, {"j", ""}});
QOR_SAMPLE(24, "Mat4df", QOR_SAMPLE_MATRIX, Mat4d<float>, sampleMatrix<float>());
QOR_SAMPLE(25, "Mat4dd", QOR_SAMPLE_MATRIX, Mat4d<double>, sampleMatrix<double>());
QOR_SAMPLE(26, "DVector", "{ 1.5 -2 } ", std::vector<double>, {1.5, -2});
QOR_SAMPLE(27, "Vec3ddVector", "{ 1 2 3 -4 5 6.5 } ", std::vector<Vec3d<double>>,
           {{1, 2, 3}, {-4, 5, 6.5}});
QOR_SAMPLE(28, "Vec3dfVector", "{ 1 2 3 } ", std::vector<Vec3d<float>>, {{1, 2, 3}});
QOR_SAMPLE(29, "Vec4ddVector", "{ 1 2 3 4 } ", std::vector<Vec4d<double>>, {{1, 2, 3, 4}});
QOR_SAMPLE(30, "VecPoly3d", "{ { 1 2 3 }  { }  } ", std::vector<std::vector<Vec3d<double>>>,
           {{{1, 2, 3}}, {}});
QOR_SAMPLE(31, "Vec2ddVector", "{ 1 2 -3 4 } ", std::vector<SVec2d<double>>, {{1, 2}, {-3, 4}});
QOR_SAMPLE(32, "Vec2dfVector", "{ 1 2 } ", std::vector<SVec2d<float>>, {{1, 2}});
QOR_SAMPLE(33, "IntVector", "{ 1 -2 } ", std::vector<int>, {1, -2});
QOR_SAMPLE(35, "Int8Vector", "{ -1 65 } ", std::vector<signed char>, {-1, 65});
QOR_SAMPLE(36, "UInt8Vector", "{ 0 255 } ", std::vector<unsigned char>, {0, 255});
QOR_SAMPLE(37, "Int16Vector", "{ -300 } ", std::vector<short>, {-300});
QOR_SAMPLE(38, "UInt16Vector", "{ 60000 } ", std::vector<unsigned short>, {60000});
QOR_SAMPLE(40, "UInt32Vector", "{ 4000000000 } ", std::vector<unsigned int>, {4000000000u});
QOR_SAMPLE(41, "Int64Vector", "{ -9000000000 } ", std::vector<std::int64_t>, {-9000000000});
QOR_SAMPLE(42, "UInt64Vector", "{ 9000000000 } ", std::vector<std::uint64_t>, {9000000000u});
QOR_SAMPLE(43, "Vec2iVector", "{ 1 -2  3 4  } ", std::vector<SVec2d<int>>, {{1, -2}, {3, 4}});
QOR_SAMPLE(44, "Vec2usVector", "{ 1 2 3 4 } ", std::vector<SVec2d<unsigned short>>,
           {{1, 2}, {3, 4}});
QOR_SAMPLE(45, "Mat4ddVector", "{ " QOR_SAMPLE_MATRIX " } ", std::vector<Mat4d<double>>,
           {sampleMatrix<double>()});
QOR_SAMPLE(46, "Uuid", "00112233-4455-6677-8899-aabbccddeeff", uuids::uuid, sampleUuid());
QOR_SAMPLE(47, "Vec3uiVector", "{ 1 2 3  } ", std::vector<SVec3d<unsigned int>>, {{1, 2, 3}});
QOR_SAMPLE(48, "UuidSet", "{ 00112233-4455-6677-8899-aabbccddeeff } ", std::set<uuids::uuid>,
           {sampleUuid()});
QOR_SAMPLE(49, "ScanPt", "1.5 2 3 10 20 30 255", ScanPt, samplePoint());
QOR_SAMPLE(50, "ScanPtVector", "{ 1.5 2 3 10 20 30 255 } ", std::vector<ScanPt>, {samplePoint()});
QOR_SAMPLE(51, "UuidVector", "{ 00112233-4455-6677-8899-aabbccddeeff } ",
           std::vector<uuids::uuid>, {sampleUuid()});
QOR_SAMPLE(52, "BoolVector", "{ true false } ", std::vector<bool>, {true, false});
QOR_SAMPLE(53, "Json::Value", R"("{\"a\":1}")", JsonValue, JsonValue{R"({"a":1})"});
#undef QOR_SAMPLE

/// The value types of a list, each once, for a typed suite.
template <class List, class... Done>
struct ValuesOf;
template <class... Done>
struct ValuesOf<TypeList<>, Done...> {
    using type = testing::Types<Done...>;
};
template <class Row, class... Rows, class... Done>
struct ValuesOf<TypeList<Row, Rows...>, Done...>
    : std::conditional_t<Row::isAlias, ValuesOf<TypeList<Rows...>, Done...>,
                         ValuesOf<TypeList<Rows...>, Done..., typename Row::Value>> {};
using AllValues = ValuesOf<ValueTypes>::type;

/// Names the instances of a typed suite by the words of their types.
struct WordOfType {
    template <class T>
    static std::string GetName(int) {
        std::string name = Sample<T>::className;
        std::erase_if(name, [](char c) { return c == '<' || c == '>' || c == ':'; });
        return name.substr(4);
    }
};

}  // namespace QOR::AttributeContainer::Testing
