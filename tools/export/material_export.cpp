#include "material_export.h"

#include "tools/common/paths.h"
#include "tools/common/text.h"
#include "tools/common/texture_files.h"
#include "tools/picture/image.h"

#include "zlmim/model/text.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <string>

namespace ZLMIM::Export
{
namespace
{

/// Materials above this version have an opacity.
constexpr std::int32_t kLastShortMaterial = 101;

/// A number that is finite and at least 0.
float Positive(float value) { return value > 0 && std::isfinite(value) ? value : 0; }

/// A colour's component as light: files have it as screens take it.
float Linear(float component)
{
    const float c = Positive(component);
    return c <= 0.04045F ? c / 12.92F : std::pow((c + 0.055F) / 1.055F, 2.4F);
}

bool IsFromZeroToOne(float value) { return value >= 0 && value <= 1; }

bool IsFromZeroToOne(const rgbColour& colour)
{
    return IsFromZeroToOne(colour.r) && IsFromZeroToOne(colour.g) && IsFromZeroToOne(colour.b);
}

/// A colour whose components may be more than 1, as long as they are finite.
std::array<float, 3> LightOf(const rgbColour& colour)
{
    const auto component = [](float c) { return std::min(Linear(c), 1e6F); };
    return {component(colour.r), component(colour.g), component(colour.b)};
}

std::array<float, 3> ClampedLightOf(const rgbColour& colour)
{
    return LightOf({std::min(colour.r, 1.0F), std::min(colour.g, 1.0F), std::min(colour.b, 1.0F)});
}

/// The roughness whose highlight is about as large as that of a specular power.
float RoughnessOf(float power) { return std::pow(2 / (Positive(power) + 2), 0.25F); }

/// Whether a file is a JPEG of one or three channels, which all readers take.
bool IsPlainJpeg(const std::string& bytes)
{
    if (!bytes.starts_with("\xFF\xD8"))
        return false;
    const auto byteAt = [&bytes](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    // Segments: a marker of two bytes, the size of what follows it in two bytes.
    for (std::size_t i = 2; i + 9 < bytes.size() && byteAt(i) == 0xFF;)
    {
        const unsigned marker = byteAt(i + 1);
        constexpr unsigned kBaseline = 0xC0;
        constexpr unsigned kProgressive = 0xC2;
        if (marker == kBaseline || marker == kProgressive)
            return byteAt(i + 9) == 1 || byteAt(i + 9) == 3;
        i += 2 + byteAt(i + 2) * std::size_t{256} + byteAt(i + 3);
    }
    return false;
}

std::optional<Image> ReadImage(const NativePath& file)
{
    const auto texture = Picture::ReadTexture(file);
    if (!texture)
        return std::nullopt;
    const std::filesystem::path path = Tools::ToPath(file);
    Image image = {ToUtf8(Tools::ToName(path.filename())), false, {}};
    std::ifstream stream(path, std::ios::binary);
    std::string beginning(2, '\0');
    if (stream.read(beginning.data(), 2) && beginning == "\xFF\xD8")
    {
        image.Bytes.assign(beginning).append(std::istreambuf_iterator<char>(stream), {});
        image.IsJpeg = IsPlainJpeg(image.Bytes);
    }
    if (!image.IsJpeg)
        image.Bytes = Picture::ToPng(*texture);
    return image;
}

} // namespace

Index MaterialExport::Add(const ZLMIM::Material& source, const Mesh& mesh, const Report& report)
{
    Material material;
    material.Name = source.Name;
    const auto [r, g, b] = ClampedLightOf(source.Diffuse);
    const bool hasOpacity = source.Version > kLastShortMaterial;
    const float opacity = hasOpacity ? std::min(Positive(source.Opacity), 1.0F) : 1;
    material.BaseColour = {r, g, b, opacity};
    material.IsBlended = opacity < 1;
    material.Emissive = ClampedLightOf(source.Emissive);
    material.Specular = LightOf(source.Specular);
    material.Roughness = RoughnessOf(source.SpecularPower);
    material.IsTwoSided = source.TwoSided != 0;
    if (!IsFromZeroToOne(source.Diffuse) || !IsFromZeroToOne(source.Emissive) ||
        (hasOpacity && !IsFromZeroToOne(source.Opacity)))
        report("colours and opacities are brought into the range of 0 to 1");

    if (source.Textures)
    {
        for (const auto& texture : source.Textures->Entries())
        {
            if (!texture)
                continue;
            if (texture->TextureType == txtype::TEX_Diffuse && !material.BaseColourTexture)
                material.BaseColourTexture = FindImage(*texture, mesh, report);
            else
                material.OtherTextures.push_back(
                    {static_cast<std::int32_t>(texture->TextureType), texture->Name, texture->Amount});
        }
    }
    mDocument.Materials.push_back(std::move(material));
    return mDocument.Materials.size() - 1;
}

std::optional<Index> MaterialExport::FindImage(const Texture& texture, const Mesh& mesh, const Report& report)
{
    if (const auto meshFile = mNames.Find(mesh.FileName, FoundFile::Kind::File))
    {
        const NativePath folder =
            meshFile->nativePath.substr(0, meshFile->nativePath.rfind(kNativeSeparator) + 1);
        for (const NativePath& file : Tools::TextureFiles(folder, texture.Name, mNames))
        {
            const auto [cached, isNew] = mImages.try_emplace(file);
            if (isNew)
            {
                if (auto image = ReadImage(file))
                {
                    cached->second = mDocument.Images.size();
                    mDocument.Images.push_back(std::move(*image));
                }
            }
            if (cached->second)
                return cached->second;
        }
    }
    report("there is no picture for the texture \"" + Tools::Printable(texture.Name) +
           "\" beside the mesh, so the material's colour is used");
    return std::nullopt;
}

} // namespace ZLMIM::Export
