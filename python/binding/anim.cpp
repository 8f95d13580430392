#include "arrays.h"
#include "binding.h"
#include "lists.h"
#include "loads.h"

#include "zlmim/anim/anim.h"

#include <cstring>

namespace ZLMIM::Python
{
namespace
{

void SetFrames(BoneAnim& bone, const py::object& given)
{
    const py::array frames = ArrayFrom<Keyframe>(given);
    const auto slots = static_cast<std::size_t>(frames.nbytes()) / sizeof(Keyframe);
    if (slots > std::size_t{std::numeric_limits<std::int32_t>::max()})
        throw py::value_error("the array is too long");
    bone.InitFrames(static_cast<std::int32_t>(slots) - 1);
    std::memcpy(bone.ShareFrames().get(), frames.data(), slots * sizeof(Keyframe));
}

} // namespace

void BindAnim(py::module_& module)
{
    auto bone = BindWithList<BoneAnim>(
        module, "BoneAnim", "BoneAnimList",
        "A bone of an animation, with a key frame for each slot. It keeps its children, not its parent.");
    bone.def(py::init<>())
        .def_property("children", &BoneAnim::Children, &BoneAnim::SetChildren,
                      "Child bones in file order: a BoneAnimList.")
        .def_readwrite("name", &BoneAnim::Name, "As stored, letter case included; need not be unique.")
        .def_readwrite("version", &BoneAnim::Version, "Version of the BONE block, as stored.")
        .def_property(
            "frames",
            [](BoneAnim& self) { return ViewOf<Keyframe>(self.ShareFrames(), self.Frames().size()); },
            &SetFrames,
            "Key frames: numpy, float32, shape (slots, 7), columns px, py, pz, qx, qy, qz, qw. A view.\n\n"
            "p is the position relative to the parent, q the rotation, a quaternion with w last. Slots are\n"
            "numbered from 0; a slot without a frame in the file is all zero. After a load there is one "
            "more\n"
            "slot than Anim.frame_count. Shape (0, 7) without a table. The view stays valid whatever "
            "happens\n"
            "to the bone. Assigning an array copies it.")
        .def(
            "init_frames", &BoneAnim::InitFrames, py::arg("highest"),
            "Replaces the frames by the slots 0 to highest, all zero. Raises BoundsError if it is negative.");

    py::class_<Anim, std::shared_ptr<Anim>> anim(
        module, "Anim",
        "An animation file (.kin): a tree of bones with their key frames. A new one is empty.\n\n"
        "One object takes one call at a time: load it on one thread, and let others read it afterwards.");
    anim.def(py::init<>())
        .def_readwrite("error_message", &Anim::ErrorMessage,
                       "Why the last load that has a text for it returned False. No load clears it.")
        .def_readwrite("frame_count", &Anim::FrameCount,
                       "Number of frames in the file, and the highest slot of each bone's frames.")
        .def_readwrite("fps", &Anim::FPS, "Frames per second.")
        .def_readwrite("version", &Anim::Version, "Version in the info block, as stored.")
        .def_readwrite("met_scale", &Anim::MetScale,
                       "As stored. The library gives it no meaning. 1 before a load reads it.")
        .def_readwrite("name", &Anim::Name, "The text in the info block.")
        .def_readwrite("file_size", &Anim::FileSize, "Length of the file in bytes.")
        .def_readwrite("root_bone", &Anim::RootBone,
                       "Root of the bones: a BoneAnim, or None if there is none.")
        .def_property(
            "file_name", [](const Anim& self) { return Path{self.FileName}; },
            [](Anim& self, const Path& path) { self.FileName = path.name; },
            "The name passed to the last load, with the system's separators.");
    BindLoads<Anim>(anim);
}

} // namespace ZLMIM::Python
