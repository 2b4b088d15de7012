// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Tells what a program of the toolkit has on the screen. To be preloaded into the program: it stands before
/// the toolkit's elm_run(), and then answers every connection to the socket SCREEN_PROBE with the fields
/// below, each line a name, a blank and a value, when what was there before, keys too, has been dealt with
/// and what that changed has been drawn. A text is what the viewer reads, without markup.
///
///   window   1 when the window is visible
///   leftover the popups that are not visible, and the buttons that are in no visible popup
///   pictures how many were drawn since the answer before
///   pixels   how many were drawn in them
///   popup    begins a popup, lowest first; its value is the title
///   text, button, focus   of the popup; texts from top to bottom, buttons in the order of their slots
// To tell an object that has members from one that has none.
#define EFL_BETA_API_SUPPORT 1
#include <Ecore_Evas.h>
#include <Ecore_X.h>
#include <Elementary.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

using Objects = std::vector<Evas_Object*>;

struct Report {
    std::string text;
    Objects placedButtons; ///< those in a visible popup

    void add(const std::string& name, std::string value)
    {
        std::replace(value.begin(), value.end(), '\n', ' ');
        text += name + " " + value + "\n";
    }
    void add(const std::string& name, int value) { add(name, std::to_string(value)); }
};

bool isOfType(const Evas_Object* object, const char* type)
{
    const char* actual = evas_object_type_get(object);
    return actual && strcmp(actual, type) == 0;
}

/// @return the name of the theme's group that a layout shows, empty for other objects
std::string groupOf(const Evas_Object* object)
{
    const char* group = nullptr;
    if (isOfType(object, "elm_layout"))
        edje_object_file_get(elm_layout_edje_get(object), nullptr, &group);
    return group ? group : "";
}

bool isStyled(const Evas_Object* object, const std::string& kind)
{
    return groupOf(object).rfind("elm/flux/" + kind, 0) == 0;
}

/// @return what the list holds; it is freed
template <typename T>
std::vector<T*> elements(Eina_List* list)
{
    std::vector<T*> result;
    void* element = nullptr;
    EINA_LIST_FREE(list, element)
    result.push_back(static_cast<T*>(element));
    return result;
}

void collect(Evas_Object* object, bool hiddenToo, Objects& result)
{
    if (!hiddenToo && !evas_object_visible_get(object))
        return;
    result.push_back(object);
    if (!efl_isa(object, EFL_CANVAS_GROUP_CLASS))
        return;
    for (auto* member : elements<Evas_Object>(evas_object_smart_members_get(object)))
        collect(member, hiddenToo, result);
}

/// Everything on a canvas, lowest first.
Objects everything(const Evas* canvas, bool hiddenToo)
{
    Objects result;
    for (Evas_Object* o = evas_object_bottom_get(canvas); o; o = evas_object_above_get(o))
        collect(o, hiddenToo, result);
    return result;
}

/// @return what is drawn of a text part
std::string readable(const Evas_Object* layout, const char* part)
{
    auto* drawn = const_cast<Evas_Object*>(edje_object_part_object_get(elm_layout_edje_get(layout), part));
    if (!drawn)
        return {};
    // Not by way of markup: that loses what follows an ampersand which is drawn as it stands.
    Evas_Textblock_Cursor* begin = evas_object_textblock_cursor_new(drawn);
    Evas_Textblock_Cursor* end = evas_object_textblock_cursor_new(drawn);
    evas_textblock_cursor_paragraph_first(begin);
    evas_textblock_cursor_paragraph_last(end);
    char* text = evas_textblock_cursor_range_text_get(begin, end, EVAS_TEXTBLOCK_TEXT_PLAIN);
    evas_textblock_cursor_free(begin);
    evas_textblock_cursor_free(end);
    std::string result = text ? text : "";
    free(text);
    // What only sets a text and says nothing: no-break and thin spaces, and what joins words.
    for (const auto& [from, to] :
        {std::pair {"\u00a0", " "}, {"\u2009", ""}, {"\u2002", ""}, {"\u2060", ""}}) {
        for (size_t at; (at = result.find(from)) != std::string::npos;)
            result.replace(at, strlen(from), to);
    }
    return result;
}

void reportTexts(Evas_Object* popup, Report& report)
{
    Objects inside;
    collect(popup, false, inside);
    Objects boxes;
    std::copy_if(inside.begin(), inside.end(), std::back_inserter(boxes),
        [](const Evas_Object* o) { return isStyled(o, "textbox/"); });
    const auto top = [](const Evas_Object* o) {
        int y = 0;
        evas_object_geometry_get(o, nullptr, &y, nullptr, nullptr);
        return y;
    };
    std::stable_sort(
        boxes.begin(), boxes.end(), [&](auto* one, auto* other) { return top(one) < top(other); });
    for (const Evas_Object* box : boxes)
        report.add("text", readable(box, "elm.text"));
}

void reportButtons(const Evas_Object* popup, Report& report)
{
    Eina_List* row = elm_box_children_get(elm_object_part_content_get(popup, "elm.swallow.buttons"));
    for (auto* button : elements<Evas_Object>(row)) {
        if (!evas_object_visible_get(button))
            continue;
        const char* label = elm_object_text_get(button);
        report.placedButtons.push_back(button);
        report.add("button", label ? label : "");
        if (elm_object_focus_get(button))
            report.add("focus", label ? label : "");
    }
}

void reportWindow(Evas_Object* window, Report& report)
{
    report.add("window", evas_object_visible_get(window) ? 1 : 0);
    const Objects all = everything(evas_object_evas_get(window), true);
    const Objects visible = everything(evas_object_evas_get(window), false);
    int leftover = 0;
    for (Evas_Object* object : all) {
        const bool isPopup = isStyled(object, "popup/");
        if (isPopup && std::find(visible.begin(), visible.end(), object) == visible.end())
            ++leftover;
        else if (isPopup) {
            report.add("popup", readable(object, "title,text"));
            reportTexts(object, report);
            reportButtons(object, report);
        }
    }
    const auto& placed = report.placedButtons;
    leftover += static_cast<int>(std::count_if(all.begin(), all.end(), [&](Evas_Object* object) {
        return isOfType(object, "elm_button")
            && std::find(placed.begin(), placed.end(), object) == placed.end();
    }));
    report.add("leftover", leftover);
}

/// How far the answer is: the next time that the loop is about to sleep what had come before has been dealt
/// with, and is drawn; the time after that what follows from the drawing has been dealt with, too.
enum class Next { Draw, Answer };

std::vector<int> s_waiting; ///< connections
Next s_next = Next::Draw;
int s_drawnPictures = 0;
int s_drawnPixels = 0;

std::string description()
{
    Report report;
    report.add("pictures", s_drawnPictures);
    report.add("pixels", s_drawnPixels);
    for (const auto* window : elements<Ecore_Evas>(ecore_evas_ecore_evas_list_get())) {
        for (Evas_Object* object : everything(ecore_evas_get(window), true)) {
            if (isOfType(object, "elm_win"))
                reportWindow(object, report);
        }
    }
    return report.text;
}

void answer(int connection)
{
    const std::string text = description();
    s_drawnPictures = 0;
    s_drawnPixels = 0;
    if (send(connection, text.data(), text.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(text.size()))
        fprintf(stderr, "ERR<screen-probe>: the answer is cut\n");
    close(connection);
}

void on_drawn(void*, Evas*, void* event)
{
    const Eina_List* areas = static_cast<Evas_Event_Render_Post*>(event)->updated_area;
    const Eina_List* entry = nullptr;
    void* area = nullptr;
    EINA_LIST_FOREACH(areas, entry, area)
    {
        const auto* added = static_cast<Eina_Rectangle*>(area);
        s_drawnPixels += added->w * added->h;
    }
    s_drawnPictures += areas ? 1 : 0; // none is drawn while nobody can see it
}

void nothing(void*) { }

/// The toolkit keeps to the pace of its animations, and draws in a thread; this waits for neither.
void draw(Ecore_Evas* window)
{
    Evas* canvas = ecore_evas_get(window);
    // Behind what the program does of its own when it is told the same.
    constexpr Evas_Callback_Priority kLast = 10 * EVAS_CALLBACK_PRIORITY_AFTER;
    evas_event_callback_del(canvas, EVAS_CALLBACK_RENDER_POST, on_drawn);
    evas_event_callback_priority_add(canvas, EVAS_CALLBACK_RENDER_POST, kLast, on_drawn, nullptr);
    evas_sync(canvas);
    ecore_evas_manual_render(window);
    evas_sync(canvas);
}

/// The loop is about to sleep.
Eina_Bool on_idle(void*)
{
    if (s_waiting.empty())
        return ECORE_CALLBACK_RENEW;
    if (s_next == Next::Draw) {
        for (auto* window : elements<Ecore_Evas>(ecore_evas_ecore_evas_list_get()))
            draw(window);
        ecore_job_add(nothing, nullptr);
        s_next = Next::Answer;
        return ECORE_CALLBACK_RENEW;
    }
    // What the program told the window system when it had drawn is there before any key that follows.
    if (ecore_x_display_get())
        ecore_x_sync();
    for (const int connection : std::exchange(s_waiting, {}))
        answer(connection);
    return ECORE_CALLBACK_RENEW;
}

Eina_Bool on_connection(void*, Ecore_Fd_Handler* handler)
{
    s_waiting.push_back(accept4(ecore_main_fd_handler_fd_get(handler), nullptr, nullptr, SOCK_CLOEXEC));
    s_next = Next::Draw;
    return ECORE_CALLBACK_RENEW;
}

int listenAt(const std::string& path)
{
    sockaddr_un address {AF_UNIX, {}};
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    unlink(address.sun_path);
    constexpr int kWaiting = 8;
    const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (bind(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0
        || listen(descriptor, kWaiting) != 0)
        abort();
    return descriptor;
}

/// Programs that this one starts are not looked into.
__attribute__((constructor)) void stayAlone()
{
    unsetenv("LD_PRELOAD");
}

} // namespace

extern "C" __attribute__((visibility("default"))) void elm_run(void)
{
    if (const char* path = getenv("SCREEN_PROBE")) {
        ecore_main_fd_handler_add(listenAt(path), ECORE_FD_READ, on_connection, nullptr, nullptr, nullptr);
        ecore_idle_enterer_add(on_idle, nullptr);
    }
    reinterpret_cast<void (*)()>(dlsym(RTLD_NEXT, "elm_run"))();
}
