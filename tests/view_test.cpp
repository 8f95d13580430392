#include "damaged_bytes.h"
#include "exporter.h"
#include "gltf_writer.h"
#include "made_assets.h"
#include "page.h"
#include "page_data.h"
#include "tools/sample/sample_files.h"
#include "zlmim/model/text.h"

#include <cmath>
#include <gtest/gtest.h>
#include <memory>
#include <rapidjson/document.h>
#include <span>
#include <sstream>
#include <string>
#include <string_view>

namespace ZLMIM::View
{
namespace
{

using namespace ZLMIM::Testing;

Export::Document GltfOf(const Tools::Asset& asset)
{
    PathResolver names;
    Export::Repairs repairs;
    return ToGltf(asset, {}, names, repairs);
}

std::string Between(const std::string& text, std::string_view begin, std::string_view end)
{
    const std::size_t from = text.find(begin) + begin.size();
    return text.substr(from, text.find(end, from) - from);
}

TEST(View, NamesFromFilesCantLeaveTheDataOfThePage)
{
    const std::u16string evil = u"</script><!--<script>\"\\\u202E@SCRIPTS@&lt;\n";
    const auto model = ModelOf(Sample::WagonMesh().Str(), "");
    model->UserName = model->Author = model->Description = evil;
    const auto entry = model->MeshTable()->Item(1);
    entry->Name = entry->Mesh->Chunks->Item(1)->Material->Name = evil;
    const Tools::Asset asset = {model, {true, {}, {}, {}}};
    Subject subject = {asset, "</script>", {"</script>"}, {}};
    Validate::Finding finding;
    finding.File = finding.Place.Entry = evil;
    finding.Message = "</script>";
    subject.Findings.Findings.push_back(finding);

    const std::string data = PageData(subject, GltfOf(asset));
    std::ostringstream out;
    WritePage(data, "model", out);
    const std::string shown = Between(out.str(), "id=\"data\">", "</script>");
    EXPECT_EQ(shown.find('<'), std::string::npos);
    EXPECT_NE(shown.find("\\u003c/script>\\u003c!--"), std::string::npos);
    rapidjson::Document before;
    rapidjson::Document after;
    ASSERT_FALSE(before.Parse(data.c_str()).HasParseError());
    ASSERT_FALSE(after.Parse(shown.c_str()).HasParseError());
    EXPECT_TRUE(before == after);
    EXPECT_EQ(Between(out.str(), "id=\"model\">", "</script>"), "bW9kZWw=");
}

TEST(View, NodesMatchThoseOfTheModelHoweverDamagedTheAssetIs)
{
    const std::string mesh = Sample::WagonMesh().Str();
    const std::string anim = Sample::WagonAnimation().Str();
    std::size_t bones = 0;
    std::size_t points = 0;
    constexpr std::uint32_t kAssets = 60;
    for (std::uint32_t seed = 0; seed < kAssets; ++seed)
    {
        SCOPED_TRACE(seed);
        // The first is whole; others are cut short as well.
        const std::string cut = mesh.substr(0, mesh.size() - seed % 4 * mesh.size() / 5);
        const auto model = seed == 0 ? ModelOf(mesh, anim) : ModelOf(Damaged(cut, seed), Damaged(anim, seed));
        const Tools::Asset asset = {model, {true, {}, {}, {}}};
        Export::Document gltf = GltfOf(asset);
        rapidjson::Document data;
        ASSERT_FALSE(data.Parse(PageData({asset, "wagon", {}, {}}, gltf).c_str()).HasParseError());
        const auto& nodes = data["nodes"];
        ASSERT_EQ(nodes.Size(), gltf.Nodes.size());
        for (rapidjson::SizeType i = 0; i < nodes.Size(); ++i)
        {
            const std::string_view kind = gltf.Nodes[i].Kind ? gltf.Nodes[i].Kind : "";
            if (kind == "bone" && nodes[i]["position"][2].IsNumber())
            {
                EXPECT_FLOAT_EQ(nodes[i]["position"][2].GetFloat(), gltf.Nodes[i].Translation->at(2));
                ++bones;
            }
            points += kind == "attachment" && nodes[i]["matrix"].Size() == 12 ? 1 : 0;
        }
        NumberNodes(gltf);
        EXPECT_EQ(gltf.Nodes.back().Name, FromWindows1252("n" + std::to_string(nodes.Size() - 1)));
    }
    EXPECT_GT(bones, kAssets);
    EXPECT_GT(points, kAssets);
}

} // namespace
} // namespace ZLMIM::View
