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

void Mesh::ReadMaterial(Material& material)
{
    const auto block = Block::Enter(mCursor, "MATL");
    if (!block)
        return;

    material.Version = mCursor.GetLong();
    const bool isLong = material.Version > kLastShortMaterial;
    if (isLong)
    {
        material.Name = mCursor.GetString();
        material.NumProperties = mCursor.GetLong();
    }
    material.TwoSided = mCursor.GetLong();
    if (isLong)
        mCursor.GetSingle(material.Opacity);
    material.Ambient = mCursor.GetColour();
    material.Diffuse = mCursor.GetColour();
    material.Specular = mCursor.GetColour();
    if (isLong)
        material.Emissive = mCursor.GetColour();
    material.SpecularPower = static_cast<float>(mCursor.GetLong());
    const std::int32_t count = mCursor.GetLong();
    // Counted first, so a load that fails in the textures has counted them all.
    TextureCount = CheckedAdd(TextureCount, count);
    material.Textures->Reserve(static_cast<std::size_t>(std::clamp(count, 0, kUsualTextures)));
    for (std::int32_t i = 0; i < count; ++i)
        material.Textures->Add(ReadTexture());

    block->Leave(mCursor);
}

std::shared_ptr<Texture> Mesh::ReadTexture()
{
    mCursor.Budget().ChargeObjects<Texture>();
    auto texture = std::make_shared<Texture>();
    texture->TextureType = static_cast<txtype>(mCursor.GetLong());
    texture->Name = StripPath(mCursor.GetString());
    mCursor.GetSingle(texture->Amount);
    return texture;
}

} // namespace ZLMIM
