#include "thumbnail.h"

#include "drawing.h"
#include "scene.h"

#include "tools/common/asset.h"

#include <memory>
#include <variant>

namespace ZLMIM::Picture
{

std::string Thumbnail(const std::u16string& config, int width, int height)
{
    const auto names = std::make_shared<PathResolver>();
    const Tools::Asset asset = Tools::LoadAsset({Tools::Kind::Model, config}, names);
    TextureCache textures;
    const SceneRequest request;
    const Scene scene =
        SceneMaker(request, *names, textures).Make(*std::get<std::shared_ptr<ZLMModel>>(asset.Object));
    if (scene.Triangles.empty() && scene.Lines.empty())
        return {};
    Frame frame(TurnFromCorner());
    frame.Include(scene);
    return ToPng(Draw(scene, frame, width, height).Image);
}

} // namespace ZLMIM::Picture
