#ifndef ZLMIM_MODEL_MEMBERSHIP_H
#define ZLMIM_MODEL_MEMBERSHIP_H

#include <memory>
#include <utility>

namespace ZLMIM
{

/// Who keeps whom alive, where objects refer to one another in rings.
///
/// A bone holds its children, and each child refers back to it: counted both ways, such a tree would never be
/// freed. So the objects that a load makes for one tree are made inside one whole, which owns them all:
///
/// - References between parts of a whole aren't counted. They are stored as a `std::shared_ptr` that owns
///   nothing.
/// - A reference that leaves the whole, to a host or to another object, is a `std::shared_ptr` to the
///   part that owns the whole. Whoever holds one bone, or one list of children, can walk to every other;
///   when the last such reference goes, all parts go at once and without recursion.
/// - A whole may have an owner that isn't a part itself, but that its parts refer back to: the entries of
///   a mesh table have their model. References to the owner aren't counted either, and whoever holds a
///   part holds the owner as well.
/// - A reference that a host writes is held as it was written, counted. A host that makes two objects
///   refer to each other, where they aren't of one whole, ties a ring that it must untie itself, by
///   writing an empty reference. A tree that it builds by itself goes level by level, by recursion: chains of
///   more than 5,000 levels may be too much for the stack.
///
/// An object that a host makes by itself belongs to no whole, and all its references are counted.
///
/// The members are for the model's own use.
/// \ingroup lists
class Membership
{
public:
    /// Belongs to no whole.
    Membership() = default;
    /// Belongs to the whole that `whole` refers to, and that `owner`, if there is one, owns.
    explicit Membership(std::weak_ptr<const void> whole, std::weak_ptr<const void> owner = {})
        : mGroup(std::move(whole)), mOwner(std::move(owner))
    {
    }

    /// Whether this is the membership of a part.
    [[nodiscard]] bool IsPart() const noexcept { return !IsSame(mGroup, {}); }

    /// An uncounted reference.
    template <class T>
    [[nodiscard]] static std::shared_ptr<T> Uncounted(T& object)
    {
        return std::shared_ptr<T>(std::shared_ptr<void>(), &object);
    }

    /// The reference to store for `given`: uncounted if it is of the same whole, or its owner; else as it is.
    template <class T>
    [[nodiscard]] std::shared_ptr<T> Store(std::shared_ptr<T> given) const
    {
        return given && Includes(*given) ? Uncounted(*given) : given;
    }

    /// The reference to give away for `stored`: one that owns the whole, and holds its owner, if `stored` is
    /// uncounted.
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

} // namespace ZLMIM

#endif
