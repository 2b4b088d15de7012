/// Tells what a program of the toolkit has on the screen. To be preloaded into the program: it stands before
/// the toolkit's elm_run(), and then answers every connection to the socket SCREEN_PROBE with the fields
/// below, each line a name, a blank and a value. A text is what the viewer reads, without markup. A
/// connection to SCREEN_PROBE with ".drawn" behind it is answered when what was there before, keys too, has
/// been dealt with and what that changed has been drawn.
///
///   window   1 when the window is visible
///   leftover the popups that are not visible, and the buttons that are in no visible popup
///   pictures how many were drawn since the answer before
///   drawn    what is around all that was drawn in them: x, y, width and height
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
#include <map>
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

void collect(Evas_Object* object, bool hiddenToo, Objects& result)
{
    if (!hiddenToo && !evas_object_visible_get(object))
        return;
    result.push_back(object);
    if (!efl_isa(object, EFL_CANVAS_GROUP_CLASS))
        return;
    Eina_List* members = evas_object_smart_members_get(object);
    void* member = nullptr;
    EINA_LIST_FREE(members, member)
    collect(static_cast<Evas_Object*>(member), hiddenToo, result);
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
    void* entry = nullptr;
    EINA_LIST_FREE(row, entry)
    {
        auto* button = static_cast<Evas_Object*>(entry);
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

/// How far a canvas is with the picture that an answer waits for.
enum class Picture { Wanted, Begun, Done };

std::vector<int> s_arrived; ///< connections
std::vector<int> s_waiting; ///< connections whose answer follows the pictures
std::map<const Evas*, Picture> s_pictures;
int s_drawnPictures = 0;
Eina_Rectangle s_drawn; ///< what is around all of it

std::vector<Evas*> canvases()
{
    std::vector<Evas*> result;
    Eina_List* all = ecore_evas_ecore_evas_list_get();
    void* entry = nullptr;
    EINA_LIST_FREE(all, entry)
    result.push_back(ecore_evas_get(static_cast<Ecore_Evas*>(entry)));
    return result;
}

bool isShown(const Evas* canvas)
{
    return ecore_evas_visibility_get(ecore_evas_ecore_evas_get(canvas));
}

std::string description()
{
    Report report;
    report.add("pictures", s_drawnPictures);
    report.add("drawn",
        std::to_string(s_drawn.x) + " " + std::to_string(s_drawn.y) + " " + std::to_string(s_drawn.w) + " "
            + std::to_string(s_drawn.h));
    for (const Evas* canvas : canvases()) {
        for (Evas_Object* object : everything(canvas, true)) {
            if (isOfType(object, "elm_win"))
                reportWindow(object, report);
        }
    }
    return report.text;
}

void answer(const std::vector<int>& connections)
{
    const std::string text = description();
    s_drawnPictures = 0;
    s_drawn = {};
    for (const int connection : connections) {
        const ssize_t sent = send(connection, text.data(), text.size(), MSG_NOSIGNAL);
        if (connection >= 0 && sent != static_cast<ssize_t>(text.size()))
            fprintf(stderr, "ERR<screen-probe>: the answer is cut\n");
        close(connection);
    }
}

void on_drawing(void*, Evas* canvas, void*)
{
    if (s_pictures[canvas] == Picture::Wanted)
        s_pictures[canvas] = Picture::Begun;
}

void on_drawn(void*, Evas* canvas, void* event)
{
    const Eina_List* areas = static_cast<Evas_Event_Render_Post*>(event)->updated_area;
    const Eina_List* entry = nullptr;
    void* area = nullptr;
    EINA_LIST_FOREACH(areas, entry, area)
    {
        const auto* added = static_cast<Eina_Rectangle*>(area);
        if (s_drawn.w == 0)
            s_drawn = *added;
        eina_rectangle_union(&s_drawn, added);
    }
    s_drawnPictures += areas ? 1 : 0; // none is drawn while nobody can see it
    if (s_pictures[canvas] == Picture::Begun)
        s_pictures[canvas] = Picture::Done;
}

void follow(Evas* canvas)
{
    // Behind what the program does of its own when it is told the same.
    constexpr Evas_Callback_Priority kLast = 10 * EVAS_CALLBACK_PRIORITY_AFTER;
    evas_event_callback_del(canvas, EVAS_CALLBACK_RENDER_PRE, on_drawing);
    evas_event_callback_del(canvas, EVAS_CALLBACK_RENDER_POST, on_drawn);
    evas_event_callback_add(canvas, EVAS_CALLBACK_RENDER_PRE, on_drawing, nullptr);
    evas_event_callback_priority_add(canvas, EVAS_CALLBACK_RENDER_POST, kLast, on_drawn, nullptr);
}

bool isAwaited(const Evas* canvas)
{
    const auto entry = s_pictures.find(canvas);
    return entry != s_pictures.end() && entry->second != Picture::Done && isShown(canvas);
}

/// Has a pixel of every visible window drawn again, and with it whatever else waits for that: the toolkit
/// keeps to the pace of its animations, and draws in a thread.
Eina_Bool on_turn(void*)
{
    if (s_waiting.empty()) {
        s_waiting.swap(s_arrived);
        s_pictures.clear();
        for (Evas* canvas : canvases()) {
            follow(canvas);
            s_pictures[canvas] = isShown(canvas) ? Picture::Wanted : Picture::Done;
            evas_damage_rectangle_add(canvas, 0, 0, 1, 1);
        }
    }
    return ECORE_CALLBACK_CANCEL;
}

/// The loop is about to sleep: what had come before has been dealt with.
Eina_Bool on_idle(void*)
{
    // A window may go while its picture is waited for.
    const auto all = canvases();
    if (s_waiting.empty() || std::any_of(all.begin(), all.end(), isAwaited))
        return ECORE_CALLBACK_RENEW;
    // What the program told the window system when it had drawn is there before any key that follows.
    if (ecore_x_display_get())
        ecore_x_sync();
    answer(std::exchange(s_waiting, {}));
    if (!s_arrived.empty())
        ecore_timer_add(0, on_turn, nullptr);
    return ECORE_CALLBACK_RENEW;
}

int accepted(Ecore_Fd_Handler* handler)
{
    return accept4(ecore_main_fd_handler_fd_get(handler), nullptr, nullptr, SOCK_CLOEXEC);
}

Eina_Bool on_connection(void*, Ecore_Fd_Handler* handler)
{
    const auto all = canvases();
    std::for_each(all.begin(), all.end(), follow);
    answer({accepted(handler)});
    return ECORE_CALLBACK_RENEW;
}

Eina_Bool on_drawnConnection(void*, Ecore_Fd_Handler* handler)
{
    s_arrived.push_back(accepted(handler));
    on_turn(nullptr);
    return ECORE_CALLBACK_RENEW;
}

int listenAt(const char* path)
{
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0 || strlen(path) >= sizeof address.sun_path)
        abort();
    strcpy(address.sun_path, path);
    unlink(path);
    constexpr int kWaiting = 8;
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
        const std::string drawn = std::string(path) + ".drawn";
        ecore_main_fd_handler_add(listenAt(path), ECORE_FD_READ, on_connection, nullptr, nullptr, nullptr);
        ecore_main_fd_handler_add(
            listenAt(drawn.c_str()), ECORE_FD_READ, on_drawnConnection, nullptr, nullptr, nullptr);
        ecore_idle_enterer_add(on_idle, nullptr);
    }
    reinterpret_cast<void (*)()>(dlsym(RTLD_NEXT, "elm_run"))();
}
