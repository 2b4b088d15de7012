// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

// To tell an object that has members from one that has none.
#define EFL_BETA_API_SUPPORT 1
#include "Scene.h"

#include "Fonts.h"
#include "Reference.h"
#include "Scripts.h"
#include "base/EflHandles.h"

#include <algorithm>
#include <cstring>

namespace gallery {

namespace {

base::CursorPtr cursorOf(const Evas_Object* textblock)
{
    return base::CursorPtr {evas_object_textblock_cursor_new(textblock)};
}

bool isOfType(const Evas_Object* object, const char* type)
{
    const char* actual = evas_object_type_get(object);
    return actual && strcmp(actual, type) == 0;
}

Box boxOf(const Evas_Object* object)
{
    Box box;
    evas_object_geometry_get(object, &box.x, &box.y, &box.width, &box.height);
    return box;
}

void collect(Evas_Object* object, std::vector<Evas_Object*>& result)
{
    if (!evas_object_visible_get(object))
        return;
    result.push_back(object);
    if (!efl_isa(object, EFL_CANVAS_GROUP_CLASS))
        return;
    Eina_List* members = evas_object_smart_members_get(object);
    void* member = nullptr;
    EINA_LIST_FREE(members, member)
    collect(static_cast<Evas_Object*>(member), result);
}

int focusedAmong(const std::vector<Evas_Object*>& objects)
{
    return static_cast<int>(std::count_if(objects.begin(), objects.end(),
        [](const Evas_Object* o) { return isOfType(o, "elm_button") && elm_object_focus_get(o); }));
}

std::string plainText(const Evas_Object* textblock)
{
    const base::CursorPtr begin = cursorOf(textblock);
    const base::CursorPtr end = cursorOf(textblock);
    evas_textblock_cursor_paragraph_first(begin.get());
    evas_textblock_cursor_paragraph_last(end.get());
    const base::MallocStr text {
        evas_textblock_cursor_range_text_get(begin.get(), end.get(), EVAS_TEXTBLOCK_TEXT_PLAIN)};
    std::string plain = validUtf8(text ? text.get() : "");
    std::replace(plain.begin(), plain.end(), '\n', ' ');
    return plain;
}

void readLines(Text& text)
{
    Box line;
    for (int i = 0; evas_object_textblock_line_number_geometry_get(
             text.object, i, &line.x, &line.y, &line.width, &line.height);
         ++i) {
        if (line.isEmpty())
            continue;
        line.x += text.box.x;
        line.y += text.box.y;
        text.lines.add(line);
    }
}

Text readText(Evas_Object* textblock, Reference& reference)
{
    Text text;
    text.object = textblock;
    text.plain = plainText(textblock);
    text.withoutFont = firstWithoutFont(text.plain);
    text.box = boxOf(textblock);
    text.scale = evas_object_scale_get(textblock);
    const double full = fullSize(textblock);
    const int fitted = evas_textblock_fit_font_size_get(textblock);
    text.fontSize = fitted > 0 ? fitted : styleNumber(textblock, "font_size");
    text.sizePx = text.fontSize * text.scale;
    text.fullSizePx = full * text.scale;
    text.isBold = isBold(textblock);
    text.fitsAtFullSize = reference.fitsAtFullSize(textblock);
    text.mask = reference.lettersOf(textblock);
    readLines(text);
    readLetters(text);
    return text;
}

/// The card is a part of the popup's theme group.
void readCard(Evas_Object* object, Scene& scene, bool isCovered)
{
    if (!isOfType(object, "edje") || !edje_object_part_exists(object, "card"))
        return;
    const Box popup = boxOf(object);
    Box card;
    edje_object_part_geometry_get(object, "card", &card.x, &card.y, &card.width, &card.height);
    card.x += popup.x;
    card.y += popup.y;
    if (isCovered)
        scene.coveredCards.push_back(card);
    else
        scene.card = card;
}

void read(const std::vector<Evas_Object*>& objects, Scene& scene, Reference& reference)
{
    for (Evas_Object* object : objects) {
        readCard(object, scene, false);
        if (isOfType(object, "elm_button")) {
            const char* label = elm_object_text_get(object);
            scene.buttons.push_back(
                {object, label ? label : "", boxOf(object), elm_object_focus_get(object) != 0});
        } else if (isOfType(object, "textblock")) {
            Text text = readText(object, reference);
            if (!text.plain.empty())
                scene.texts.push_back(std::move(text));
        }
    }
}

} // namespace

std::vector<Evas_Object*> objectsOf(const Evas_Object* window)
{
    std::vector<Evas_Object*> objects;
    const Evas* canvas = evas_object_evas_get(window);
    for (Evas_Object* root = evas_object_bottom_get(canvas); root; root = evas_object_above_get(root))
        collect(root, objects);
    return objects;
}

Scene look(const Evas_Object* window, Reference& reference)
{
    Scene scene;
    // From the top down to the popup that has the keys; what lies below is not to be read.
    const Evas* canvas = evas_object_evas_get(window);
    bool isCovered = false;
    for (Evas_Object* root = evas_object_top_get(canvas); root; root = evas_object_below_get(root)) {
        std::vector<Evas_Object*> objects;
        collect(root, objects);
        const int focused = focusedAmong(objects);
        scene.focused += focused;
        if (!isCovered) {
            read(objects, scene, reference);
        } else {
            for (Evas_Object* object : objects)
                readCard(object, scene, true);
        }
        isCovered |= focused > 0;
    }
    return scene;
}

} // namespace gallery
