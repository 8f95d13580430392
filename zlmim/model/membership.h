#pragma once

#include <memory>
#include <utility>

namespace ZLMIM
{

class Bone;
class MeshEntry;

/// Ownership of objects that refer to one another in rings.
///
/// A bone holds its children, and each child refers back to it. If both references were counted, such a tree
/// would never be freed. So a load creates the objects of one tree inside one group, which owns them all:
///
/// - References between objects of one group aren't counted. They are stored as a `std::shared_ptr` that owns
///   nothing.
/// - A reference that leaves the group, to a host or to another object, is a `std::shared_ptr` that points to
///   the object and owns the group. From one bone, or one list of children, a host can reach every other.
///   When the last such reference is released, all objects of the group are destroyed at once and without
///   recursion.
/// - A group may have an owner that isn't in the group itself, but that its objects refer back to: the
///   entries of a mesh table have their model. References to the owner aren't counted either. A reference to
///   an object of the group also keeps the owner alive.
/// - A reference that a host writes is stored as written, counted. If a host makes two objects refer to each
///   other that aren't of one group, it creates a ring. It must break the ring itself, by writing a null
///   reference. A tree that a host builds is destroyed level by level, by recursion: more than 5,000 levels
///   may overflow the stack.
///
/// An object that a host creates belongs to no group, and all its references are counted.
///
/// The member functions are for the model's own use.
/// \ingroup lists
class Membership
{
public:
    /// Belongs to no group.
    Membership() = default;
    /// Belongs to the group that `whole` refers to. `owner`, which may be empty, owns that group.
    explicit Membership(std::weak_ptr<const void> whole, std::weak_ptr<const void> owner = {})
        : mGroup(std::move(whole)), mOwner(std::move(owner))
    {
    }

    /// Whether the object belongs to a group.
    [[nodiscard]] bool IsPart() const noexcept { return !IsSame(mGroup, {}); }

    /// An uncounted reference.
    template <class T>
    [[nodiscard]] static std::shared_ptr<T> Uncounted(T& object)
    {
        return std::shared_ptr<T>(std::shared_ptr<void>(), &object);
    }

    /// The reference to store for `given`. It is uncounted if `given` is of the same group or its owner;
    /// otherwise it is `given` itself.
    template <class T>
    [[nodiscard]] std::shared_ptr<T> Store(std::shared_ptr<T> given) const
    {
        return given && Includes(*given) ? Uncounted(*given) : given;
    }

    /// The reference to return for `stored`. If `stored` is uncounted, the result owns the group and keeps
    /// its owner alive.
    template <class T>
    [[nodiscard]] std::shared_ptr<T> Share(const std::shared_ptr<T>& stored) const
    {
        if (!stored || stored.use_count() != 0)
            return stored;
        auto whole = mGroup.lock();
        auto owner = mOwner.lock();
        if (!owner)
            return std::shared_ptr<T>(std::move(whole), stored.get());
        using Both = std::pair<std::shared_ptr<const void>, std::shared_ptr<const void>>;
        return std::shared_ptr<T>(std::make_shared<Both>(std::move(whole), std::move(owner)), stored.get());
    }

private:
    template <class T>
    [[nodiscard]] bool Includes(const T& object) const
    {
        if constexpr (requires { object.Group(); })
            return IsPart() && IsSame(mGroup, object.Group().mGroup);
        else
            return mOwner.lock().get() == static_cast<const void*>(&object);
    }

    [[nodiscard]] static bool IsSame(const std::weak_ptr<const void>& a,
                                     const std::weak_ptr<const void>& b) noexcept
    {
        return !a.owner_before(b) && !b.owner_before(a);
    }

    std::weak_ptr<const void> mGroup;
    std::weak_ptr<const void> mOwner;
};

/// True for types whose objects, and lists of them, may belong to a group.
/// \ingroup inside
template <class T>
inline constexpr bool kHasGroups = false;
/// A bone.
/// \ingroup inside
template <>
inline constexpr bool kHasGroups<Bone> = true;
/// An entry of a mesh table.
/// \ingroup inside
template <>
inline constexpr bool kHasGroups<MeshEntry> = true;

} // namespace ZLMIM
