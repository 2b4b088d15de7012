/// Late callbacks find their object, or find out that it is gone.
#include "Cookie.h"

#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>

namespace {

using TesselUI::Cookie;

/// Each case has a type of its own, because ids count per type for the whole run.
template <int Case>
struct Owner {
    explicit Owner(bool fails = false)
        : cookie(this)
    {
        if (fails)
            throw std::runtime_error("no bus");
    }
    Cookie<Owner> cookie;
};

TEST(ACookie, GivesIdsFromOneOnForEachTypeByItself)
{
    using First = Owner<1>;
    using Second = Owner<2>;
    const First a;
    const First b;
    const Second other;
    EXPECT_EQ(a.cookie.id(), 1);
    EXPECT_EQ(b.cookie.id(), 2);
    EXPECT_EQ(other.cookie.id(), 1);
    EXPECT_EQ(Cookie<First>::find(GINT_TO_POINTER(1)), &a);
    EXPECT_EQ(Cookie<Second>::find(other.cookie.userData()), &other);
}

TEST(ACookie, IsFoundExactlyWhileItsOwnerLives)
{
    using Object = Owner<3>;
    auto gone = std::make_unique<Object>();
    const Object stays;
    gpointer const goneData = gone->cookie.userData();
    gone.reset();

    EXPECT_EQ(Cookie<Object>::find(goneData), nullptr);
    EXPECT_EQ(Cookie<Object>::find(stays.cookie.userData()), &stays);
    EXPECT_EQ(Cookie<Object>::find(nullptr), nullptr);
    EXPECT_EQ(Cookie<Object>::find(GINT_TO_POINTER(-1)), nullptr);

    const Object later;
    EXPECT_NE(later.cookie.userData(), goneData) << "an id was used twice";
    EXPECT_EQ(Cookie<Object>::find(goneData), nullptr);
}

TEST(ACookie, GoesWithAnOwnerWhoseConstructionFails)
{
    using Object = Owner<4>;
    EXPECT_THROW(Object(true), std::runtime_error);
    EXPECT_EQ(Cookie<Object>::find(GINT_TO_POINTER(1)), nullptr);
}

} // namespace
