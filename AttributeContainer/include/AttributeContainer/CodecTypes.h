// The list of all types that have a text in the model stream. A new type is one row here.
#pragma once

#include <AttributeContainer/VersionNum.h>
#include <QOR/JsonValue.h>
#include <QOR/Mat4d.h>
#include <QOR/ScanPtColor.h>
#include <QOR/StatisticVal.h>
#include <QOR/Time.h>
#include <QOR/Uuid.h>
#include <QOR/Vec.h>

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace QOR::AttributeContainer {

// The one list. `DO` is a macro that takes a type, with what commas it has. A list of macro calls,
// because the instances of the codecs are made from it as well.
#define QOR_CODEC_TYPES(DO)                                \
    QOR_CODEC_TYPE_AND_LIST(DO, signed char)               \
    QOR_CODEC_TYPE_AND_LIST(DO, unsigned char)             \
    QOR_CODEC_TYPE_AND_LIST(DO, short)                     \
    QOR_CODEC_TYPE_AND_LIST(DO, unsigned short)            \
    QOR_CODEC_TYPE_AND_LIST(DO, int)                       \
    QOR_CODEC_TYPE_AND_LIST(DO, unsigned int)              \
    QOR_CODEC_TYPE_AND_LIST(DO, std::int64_t)              \
    QOR_CODEC_TYPE_AND_LIST(DO, std::uint64_t)             \
    QOR_CODEC_TYPE_AND_LIST(DO, float)                     \
    QOR_CODEC_TYPE_AND_LIST(DO, double)                    \
    QOR_CODEC_TYPE_AND_LIST(DO, bool)                      \
    QOR_CODEC_TYPE_AND_LIST(DO, uuids::uuid)               \
    QOR_CODEC_TYPE_AND_LIST(DO, SVec2d<unsigned short>)    \
    QOR_CODEC_TYPE_AND_LIST(DO, SVec2d<int>)               \
    QOR_CODEC_TYPE_AND_LIST(DO, SVec2d<unsigned int>)      \
    QOR_CODEC_TYPE_AND_LIST(DO, SVec2d<float>)             \
    QOR_CODEC_TYPE_AND_LIST(DO, SVec2d<double>)            \
    QOR_CODEC_TYPE_AND_LIST(DO, SVec3d<unsigned short>)    \
    QOR_CODEC_TYPE_AND_LIST(DO, SVec3d<int>)               \
    QOR_CODEC_TYPE_AND_LIST(DO, SVec3d<unsigned int>)      \
    QOR_CODEC_TYPE_AND_LIST(DO, SVec3d<float>)             \
    QOR_CODEC_TYPE_AND_LIST(DO, SVec3d<double>)            \
    QOR_CODEC_TYPE_AND_LIST(DO, Vec3d<float>)              \
    QOR_CODEC_TYPE_AND_LIST(DO, Vec3d<double>)             \
    QOR_CODEC_TYPE_AND_LIST(DO, Vec4d<float>)              \
    QOR_CODEC_TYPE_AND_LIST(DO, Vec4d<double>)             \
    QOR_CODEC_TYPE_AND_LIST(DO, Mat4d<float>)              \
    QOR_CODEC_TYPE_AND_LIST(DO, Mat4d<double>)             \
    QOR_CODEC_TYPE_AND_LIST(DO, ScanPtColor<Vec3d<float>>) \
    QOR_CODEC_TYPE_AND_LIST(DO, std::string)               \
    DO(Vec4d<unsigned char>)                               \
    DO(JsonValue)                                          \
    DO(Time)                                               \
    DO(VersionNum)                                         \
    DO(StatisticVal<double>)                               \
    DO(StatisticValLimits<double>)                         \
    DO(std::vector<std::vector<Vec3d<double>>>)            \
    DO(std::set<std::uint32_t>)                            \
    DO(std::set<std::uint64_t>)                            \
    DO(std::set<uuids::uuid>)                              \
    DO(std::set<std::string>)                              \
    DO(std::map<std::string, std::string>)

#define QOR_CODEC_TYPE_AND_LIST(DO, ...) DO(__VA_ARGS__) DO(std::vector<__VA_ARGS__>)

template <class T> inline constexpr bool isCodecType = false;
#define QOR_MARK_CODEC_TYPE(...) template <> inline constexpr bool isCodecType<__VA_ARGS__> = true;
QOR_CODEC_TYPES(QOR_MARK_CODEC_TYPE)
#undef QOR_MARK_CODEC_TYPE

/// A type that has a text in the model stream: one of the list.
template <class T> concept CodecValue = isCodecType<T>;

}  // namespace QOR::AttributeContainer
