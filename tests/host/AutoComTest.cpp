#include "host/auto_com.h"

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

namespace {

/// Counts as host objects do, but never dies.
class Counted {
public:
    void AddRef() { ++references; }
    void Release() { --references; }

    int references = 1;
};

class DerivedCounted : public Counted {};

using Holder = vq::auto_com<Counted>;

TEST(AutoComTest, EmptyHolderHoldsAndReleasesNothing) {
    const Holder byDefault;
    const Holder fromNull = nullptr;
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the copy is what is tested
    const Holder copy(byDefault);

    EXPECT_FALSE(byDefault);
    EXPECT_FALSE(fromNull);
    EXPECT_FALSE(copy);
    EXPECT_EQ(copy.Get(), nullptr);
}

TEST(AutoComTest, AdoptsTheReferenceThatComesWithAPointerAndDropsIt) {
    Counted object;
    {
        const Holder holder(&object);
        EXPECT_EQ(object.references, 1);
        EXPECT_EQ(holder.Get(), &object);
        EXPECT_EQ(&*holder, &object);
        EXPECT_EQ(holder->references, 1);
        EXPECT_TRUE(holder);
    }
    EXPECT_EQ(object.references, 0);
}

TEST(AutoComTest, PlainPointersDoNotBecomeHoldersByThemselves) {
    EXPECT_FALSE((std::is_convertible_v<Counted*, Holder>));
}

TEST(AutoComTest, CopyTakesAFurtherReference) {
    Counted object;
    const Holder holder(&object);
    {
        // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the copy is what is tested
        const Holder copy(holder);
        EXPECT_EQ(object.references, 2);
        EXPECT_EQ(copy.Get(), holder.Get());
    }
    EXPECT_EQ(object.references, 1);
}

TEST(AutoComTest, MoveTakesTheReferenceAlongAndEmptiesTheSource) {
    Counted object;
    Holder source(&object);

    const Holder target(std::move(source));

    EXPECT_EQ(object.references, 1);
    EXPECT_EQ(target.Get(), &object);
    EXPECT_FALSE(source); // NOLINT(bugprone-use-after-move): that it is empty is what is tested
}

TEST(AutoComTest, ReassignmentDropsTheFormerReference) {
    Counted former;
    Counted next;
    Holder holder(&former);
    const Holder other(&next);

    holder = other;

    EXPECT_EQ(former.references, 0);
    EXPECT_EQ(next.references, 2);
    EXPECT_EQ(holder.Get(), &next);
}

TEST(AutoComTest, AssignmentFromATemporaryTakesItsReference) {
    Counted former;
    Counted next;
    Holder holder(&former);

    holder = Holder(&next);

    EXPECT_EQ(former.references, 0);
    EXPECT_EQ(next.references, 1);
}

TEST(AutoComTest, AssignmentOfNullEmptiesTheHolder) {
    Counted object;
    Holder holder(&object);

    holder = nullptr;

    EXPECT_EQ(object.references, 0);
    EXPECT_FALSE(holder);
}

TEST(AutoComTest, SelfAssignmentKeepsTheReference) {
    Counted object;
    Holder holder(&object);
    Holder& same = holder;

    holder = same;
    EXPECT_EQ(object.references, 1);
    holder = std::move(same);
    EXPECT_EQ(object.references, 1);
    EXPECT_EQ(holder.Get(), &object);
}

TEST(AutoComTest, HolderOfADerivedTypeConverts) {
    DerivedCounted object;
    const vq::auto_com<DerivedCounted> derived(&object);
    {
        const Holder holder = derived;
        EXPECT_EQ(object.references, 2);
        EXPECT_EQ(holder.Get(), &object);
    }
    EXPECT_EQ(object.references, 1);
}

TEST(AutoComTest, DetachHandsTheReferenceToTheCaller) {
    Counted object;
    {
        Holder holder(&object);
        EXPECT_EQ(holder.Detach(), &object);
        EXPECT_FALSE(holder);
    }
    EXPECT_EQ(object.references, 1);
}

} // namespace
