// To tell an object that has members from one that has none.
#define EFL_BETA_API_SUPPORT 1
#include "Scene.h"

#include "Fonts.h"
#include "base/EflHandles.h"

#include <algorithm>
#include <cstring>

namespace gallery {

namespace {

/// Letters of a run: few enough for a second colour in a line to be seen, enough to hold one with a stroke.
constexpr int kRunLetters = 4;

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

/// Names need not be of valid UTF-8, and the report has to be.
std::string valid(const char* text)
{
    std::string result;
    for (int at = 0; text[at] != '\0';) {
        const int begin = at;
        const Eina_Unicode character = eina_unicode_utf8_next_get(text, &at);
        // The library gives each broken byte a place of its own.
        const bool isBroken = character >= 0xDC80 && character <= 0xDCFF;
        result += isBroken ? "\uFFFD" : std::string(text + begin, static_cast<size_t>(at - begin));
    }
    return result;
}

std::string plainText(const Evas_Object* textblock)
{
    const base::CursorPtr begin = cursorOf(textblock);
    const base::CursorPtr end = cursorOf(textblock);
    evas_textblock_cursor_paragraph_first(begin.get());
    evas_textblock_cursor_paragraph_last(end.get());
    const base::MallocStr text {
        evas_textblock_cursor_range_text_get(begin.get(), end.get(), EVAS_TEXTBLOCK_TEXT_PLAIN)};
    std::string plain = valid(text ? text.get() : "");
    std::replace(plain.begin(), plain.end(), '\n', ' ');
    return plain;
}

/// @return the first character, 0 for none
uint32_t firstCharacter(const char* text)
{
    int index = 0;
    return text && *text ? static_cast<uint32_t>(eina_unicode_utf8_next_get(text, &index)) : 0;
}

/// Emoji have colours of their own, and what joins or varies them is drawn with them.
bool isEmoji(uint32_t character)
{
    return character == 0x200D || character == 0xFE0F || (character >= 0x2600 && character < 0x27C0)
        || character >= 0x1F000;
}

void add(Box& run, const Box& letter)
{
    const Box sum {std::min(run.x, letter.x), std::min(run.y, letter.y),
        std::max(run.right(), letter.right()) - std::min(run.x, letter.x),
        std::max(run.bottom(), letter.bottom()) - std::min(run.y, letter.y)};
    run = run.isEmpty() ? letter : sum;
}

/// Letters that an ellipsis took out are on no line.
void readLetters(Text& text)
{
    const base::CursorPtr cursor = cursorOf(text.object);
    Box run;
    int letters = 0;
    int line = -1;
    const auto endRun = [&] {
        if (!run.isEmpty())
            text.runs.push_back(run);
        run = {};
        letters = 0;
    };
    do {
        const base::MallocStr content {evas_textblock_cursor_content_get(cursor.get())};
        Box letter;
        const int at = evas_textblock_cursor_char_geometry_get(
            cursor.get(), &letter.x, &letter.y, &letter.width, &letter.height);
        const bool isBlank = !content || *content == '\0' || *content == ' ' || *content == '<';
        if (at < 0) {
            text.isCut |= !isBlank;
            continue;
        }
        const bool isDrawing = isEmoji(firstCharacter(content.get()));
        if (isBlank || isDrawing || at != line || letters == kRunLetters)
            endRun();
        line = at;
        if (isBlank || isDrawing || letter.isEmpty())
            continue;
        letter.x += text.box.x;
        letter.y += text.box.y;
        add(run, letter);
        ++letters;
    } while (evas_textblock_cursor_char_next(cursor.get()));
    endRun();
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
        add(text.lines, line);
    }
}

Text readText(Evas_Object* textblock)
{
    Text text;
    text.object = textblock;
    text.plain = plainText(textblock);
    text.withoutFont = firstWithoutFont(text.plain);
    text.box = boxOf(textblock);
    text.sizePx = evas_textblock_fit_font_size_get(textblock) * evas_object_scale_get(textblock);
    readLines(text);
    readLetters(text);
    return text;
}

/// The card is a part of the popup's theme group.
void readCard(Evas_Object* object, Scene& scene)
{
    if (!isOfType(object, "edje") || !edje_object_part_exists(object, "card"))
        return;
    const Box popup = boxOf(object);
    Box card;
    edje_object_part_geometry_get(object, "card", &card.x, &card.y, &card.width, &card.height);
    card.x += popup.x;
    card.y += popup.y;
    scene.card = card;
}

void read(const std::vector<Evas_Object*>& objects, Scene& scene)
{
    for (Evas_Object* object : objects) {
        readCard(object, scene);
        if (isOfType(object, "elm_button")) {
            const char* label = elm_object_text_get(object);
            scene.buttons.push_back({label ? label : "", boxOf(object), elm_object_focus_get(object) != 0});
        } else if (isOfType(object, "textblock")) {
            Text text = readText(object);
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

Scene look(const Evas_Object* window)
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
        if (!isCovered)
            read(objects, scene);
        isCovered |= focused > 0;
    }
    return scene;
}

} // namespace gallery
