#pragma once

#include "zlmim/component/guid.h"
#include "zlmim/model/enumerations.h"
#include "zlmim/model/records.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace ZLMIM::Component
{

/// A field of a record: a float or a record.
struct Field
{
    const char* name;
    const char* type;
};

/// A record of the type library.
struct RecordType
{
    const char* name;
    GUID guid;
    const char* help;
    std::size_t size;
    std::span<const Field> fields;
};

struct Enumerator
{
    const char* name;
    std::int32_t value;
};

/// An enumeration of the type library.
struct EnumerationType
{
    const char* name;
    GUID guid;
    const char* help;
    std::span<const Enumerator> enumerators;
};

/// The type `T` in the type library.
template <class T>
inline constexpr RecordType kRecordType{};
template <class T>
inline constexpr EnumerationType kEnumerationType{};

// clang-format off
inline constexpr const char* kMeshHelp = "The object representing an IM file from ZLM";
inline constexpr const char* kBoneHelp = "Bone object used by animated meshes";
inline constexpr const char* kGeometryHelp = "All the points, normals and face definitions";

inline constexpr Field kVectorFields[] = {{"x", "float"}, {"y", "float"}, {"z", "float"}};
inline constexpr Field kQuaternionFields[] = {{"x", "float"}, {"y", "float"}, {"z", "float"}, {"w", "float"}};
inline constexpr Field kVertexFields[] = {{"x", "float"}, {"y", "float"}, {"z", "float"}, {"u", "float"}, {"v", "float"}};
inline constexpr Field kMatrixFields[] = {
    {"m11", "float"}, {"m12", "float"}, {"m13", "float"},
    {"m21", "float"}, {"m22", "float"}, {"m23", "float"},
    {"m31", "float"}, {"m32", "float"}, {"m33", "float"},
    {"m41", "float"}, {"m42", "float"}, {"m43", "float"}};
inline constexpr Field kKeyframeFields[] = {{"p", "Vector"}, {"q", "Quaternion"}};
inline constexpr Field kColourFields[] = {{"r", "float"}, {"g", "float"}, {"b", "float"}};

template <> inline constexpr RecordType kRecordType<Vector>{
    "Vector", ParseGuid("754C16C7-A067-4125-BBB2-0249B3850BB6"), kMeshHelp, sizeof(Vector), kVectorFields};
template <> inline constexpr RecordType kRecordType<Quaternion>{
    "Quaternion", ParseGuid("51054D8D-23A6-4E00-A96F-54CACBDA9620"), kMeshHelp, sizeof(Quaternion), kQuaternionFields};
template <> inline constexpr RecordType kRecordType<Vertex>{
    "Vertex", ParseGuid("7D42C12C-5A5D-4B78-BEB4-6FB5D002E477"), kMeshHelp, sizeof(Vertex), kVertexFields};
template <> inline constexpr RecordType kRecordType<Matrix>{
    "Matrix", ParseGuid("BFC644EC-FA94-46E8-9076-C5EA9651DBF8"), kMeshHelp, sizeof(Matrix), kMatrixFields};
template <> inline constexpr RecordType kRecordType<Keyframe>{
    "Keyframe", ParseGuid("187F3144-356A-4D97-B0C7-03E8B9F2D47F"), kBoneHelp, sizeof(Keyframe), kKeyframeFields};
template <> inline constexpr RecordType kRecordType<rgbColour>{
    "rgbColour", ParseGuid("14C28BAB-4DCC-47CD-8963-AE59C295383A"), kMeshHelp, sizeof(rgbColour), kColourFields};

inline constexpr Enumerator kPrimFlags[] = {
    {"NONE", 0}, {"POINTS", 1}, {"LINES", 2}, {"LINE_STRIP", 3}, {"TRIANGLES", 4}, {"TRI_STRIP", 5}, {"TRI_FAN", 6}};
inline constexpr Enumerator kTextureTypes[] = {
    {"TEX_Ambient", 0}, {"TEX_Diffuse", 1}, {"TEX_Specular", 2}, {"TEX_Shine", 3}, {"TEX_Shinestrength", 4},
    {"TEX_Selfillum", 5}, {"TEX_Opacity", 6}, {"TEX_Filtercolor", 7}, {"TEX_Bump", 8}, {"TEX_Reflect", 9},
    {"TEX_Refract", 10}, {"TEX_Displacement", 11}, {"TEX_NumtypeS", 12}};

template <> inline constexpr EnumerationType kEnumerationType<PrimFlag>{
    "PrimFlag", ParseGuid("2A8932AF-6CF4-487E-BA0B-0568FA902E76"), kGeometryHelp, kPrimFlags};
template <> inline constexpr EnumerationType kEnumerationType<txtype>{
    "txtype", ParseGuid("781BD505-4624-46DB-8EB0-213B0B05353A"), nullptr, kTextureTypes};

/// All of them, each after the types of its fields.
inline constexpr const EnumerationType* kEnumerationTypes[] = {&kEnumerationType<PrimFlag>, &kEnumerationType<txtype>};
inline constexpr const RecordType* kRecordTypes[] = {
    &kRecordType<Vector>, &kRecordType<Quaternion>, &kRecordType<Vertex>,
    &kRecordType<Matrix>, &kRecordType<Keyframe>, &kRecordType<rgbColour>};
// clang-format on

} // namespace ZLMIM::Component
