// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Outline.h"

#include <algorithm>
#include <string_view>

namespace orbis::flux {

namespace {

constexpr int kWhole = 256; ///< the toolkit's renderer divides by shifting, and rounds down

/// How far something may be drawn beyond its own place, pixels: what is turned or smoothed.
constexpr int kOverhang = 16;

int share(int value, int parts)
{
    return value * parts / kWhole;
}

Tint colourOf(const Evas_Object* object)
{
    Tint tint;
    evas_object_color_get(object, &tint.red, &tint.green, &tint.blue, &tint.alpha);
    return tint;
}

Tint over(const Tint& below, const Tint& above)
{
    const int through = kWhole - above.alpha;
    return {above.red + share(below.red, through), above.green + share(below.green, through),
        above.blue + share(below.blue, through), above.alpha + share(below.alpha, through)};
}

class Look {
public:
    explicit Look(Evas* canvas)
        : m_whole(wholeOf(canvas))
    {
        m_outline.rest = Tint {};
        for (Evas_Object* object = evas_object_bottom_get(canvas); object;
             object = evas_object_above_get(object))
            visit(object);
    }

    const Outline& outline() const { return m_outline; }

private:
    void visit(Evas_Object* object)
    {
        if (!evas_object_visible_get(object))
            return;
        if (isLeaf(object)) {
            note(object);
            return;
        }
        Eina_List* members = evas_object_smart_members_get(object);
        void* member = nullptr;
        EINA_LIST_FREE(members, member)
        visit(static_cast<Evas_Object*>(member));
    }

    void note(const Evas_Object* object)
    {
        if (evas_object_clipees_has(object))
            return; // only what it clips is drawn
        Area place = placeOf(object);
        Tint colour = colourOf(object);
        if (evas_object_map_enable_get(object)) { // it may be turned about its middle
            const int longest = std::max(place.right - place.left, place.bottom - place.top);
            place = {
                place.left - longest, place.top - longest, place.right + longest, place.bottom + longest};
        }
        for (const Evas_Object* clip = evas_object_clip_get(object); clip;
             clip = evas_object_clip_get(clip)) {
            if (!evas_object_visible_get(clip))
                return;
            const Tint through = colourOf(clip);
            place = place.cutTo(placeOf(clip));
            colour = {share(colour.red, through.red + 1), share(colour.green, through.green + 1),
                share(colour.blue, through.blue + 1), share(colour.alpha, through.alpha + 1)};
        }
        place = place.cutTo(m_whole); // the window's own frame lies outside
        if (colour.alpha > 0 && !place.isEmpty())
            add(place, colour, std::string_view {evas_object_type_get(object)} == "rectangle");
    }

    void add(const Area& place, const Tint& colour, bool isPlain)
    {
        if (!place.covers(m_whole)) {
            const Area drawn {place.left - kOverhang, place.top - kOverhang, place.right + kOverhang,
                place.bottom + kOverhang};
            m_outline.things = m_outline.things.with(drawn.cutTo(m_whole));
        } else if (!isPlain) {
            m_outline.rest.reset();
        } else if (m_outline.rest) {
            m_outline.rest = over(*m_outline.rest, colour);
        }
    }

    Area m_whole;
    Outline m_outline;
};

} // namespace

Area Area::with(const Area& other) const
{
    if (isEmpty())
        return other;
    if (other.isEmpty())
        return *this;
    return {std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
        std::max(bottom, other.bottom)};
}

Area Area::cutTo(const Area& other) const
{
    return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
        std::min(bottom, other.bottom)};
}

bool isLeaf(const Evas_Object* object)
{
    constexpr std::string_view kLeaves[] = {
        "rectangle", "image", "text", "textblock", "vectors", "textgrid", "polygon", "line"};
    return std::find(std::begin(kLeaves), std::end(kLeaves), evas_object_type_get(object))
        != std::end(kLeaves);
}

Area placeOf(const Evas_Object* object)
{
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    evas_object_geometry_get(object, &x, &y, &width, &height);
    return {x, y, x + width, y + height};
}

Area wholeOf(const Evas* canvas)
{
    Area whole;
    evas_output_size_get(canvas, &whole.right, &whole.bottom);
    return whole;
}

void drawAgain(Evas* canvas, const Area& area)
{
    evas_damage_rectangle_add(canvas, area.left, area.top, area.right - area.left, area.bottom - area.top);
}

Outline outlineOf(Evas* canvas)
{
    return Look {canvas}.outline();
}

} // namespace orbis::flux
