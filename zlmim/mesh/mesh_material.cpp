#include "zlmim/mesh/mesh.h"
#include "zlmim/model/errors.h"
#include "zlmim/reader/block.h"
#include "zlmim/reader/load_budget.h"

#include <algorithm>

namespace ZLMIM
{
namespace
{

/// MATL blocks above this version have the long form.
constexpr std::int32_t kLastShortMaterial = 101;

/// Few materials have more textures.
constexpr std::int32_t kUsualTextures = 8;

std::u16string StripPath(std::u16string text)
{
    text.erase(0, text.rfind(u'\\') + 1); // npos + 1 is 0
    return text;
}

} // namespace

void Mesh::ReadMaterial(FileCursor& cursor, Material& material)
{
    const auto block = Block::Enter(cursor, "MATL");
    if (!block)
        return;

    material.Version = cursor.GetLong();
    const bool isLong = material.Version > kLastShortMaterial;
    if (isLong)
    {
        material.Name = cursor.GetString();
        material.NumProperties = cursor.GetLong();
    }
    material.TwoSided = cursor.GetLong();
    if (isLong)
        cursor.GetSingle(material.Opacity);
    material.Ambient = cursor.GetColour();
    material.Diffuse = cursor.GetColour();
    material.Specular = cursor.GetColour();
    if (isLong)
        material.Emissive = cursor.GetColour();
    material.SpecularPower = static_cast<float>(cursor.GetLong());
    const std::int32_t count = cursor.GetLong();
    // Counted first, so a load that fails in the textures has counted them all.
    TextureCount = CheckedAdd(TextureCount, count);
    material.Textures->Reserve(static_cast<std::size_t>(std::clamp(count, 0, kUsualTextures)));
    for (std::int32_t i = 0; i < count; ++i)
        material.Textures->Add(ReadTexture(cursor));

    block->Leave(cursor);
}

std::shared_ptr<Texture> Mesh::ReadTexture(FileCursor& cursor)
{
    cursor.Budget().ChargeObjects<Texture>();
    auto texture = std::make_shared<Texture>();
    texture->TextureType = static_cast<txtype>(cursor.GetLong());
    texture->Name = StripPath(cursor.GetString());
    cursor.GetSingle(texture->Amount);
    return texture;
}

} // namespace ZLMIM
