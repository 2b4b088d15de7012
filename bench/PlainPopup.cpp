// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What a popup costs when it is done the plain way: a service on the bus that shows Elementary's own popup,
/// with a title, a text and a button, on a window of the screen's size. The figures of the program are held
/// against it.
#include <Eldbus.h>
#include <Elementary.h>

namespace {

constexpr const char* kName = "org.orbis.bench.plain";
constexpr const char* kPath = "/org/orbis/bench/plain";

Evas_Object* s_window = nullptr;
Evas_Object* s_popup = nullptr;

Eldbus_Message* show(const Eldbus_Service_Interface*, const Eldbus_Message* message)
{
    const char* phone = "";
    const char* pin = "";
    if (!eldbus_message_arguments_get(message, "ss", &phone, &pin))
        return eldbus_message_error_new(message, "org.orbis.bench.Error", "a phone and a PIN");
    evas_object_del(s_popup);
    s_popup = elm_popup_add(s_window);
    elm_object_part_text_set(s_popup, "title,text", "Set-up with your phone");
    Eina_Strbuf* text = eina_strbuf_new();
    eina_strbuf_append_printf(text, "Enter this PIN on %s:<br/><br/>%s", phone, pin);
    elm_object_text_set(s_popup, eina_strbuf_string_get(text));
    eina_strbuf_free(text);
    Evas_Object* button = elm_button_add(s_popup);
    elm_object_text_set(button, "Cancel");
    elm_object_part_content_set(s_popup, "button1", button);
    evas_object_show(s_popup);
    evas_object_show(s_window);
    elm_win_raise(s_window);
    return eldbus_message_method_return_new(message);
}

Eldbus_Message* hide(const Eldbus_Service_Interface*, const Eldbus_Message* message)
{
    evas_object_del(s_popup);
    s_popup = nullptr;
    if (!elm_win_wl_window_get(s_window)) // the toolkit could not show it again
        evas_object_hide(s_window);
    return eldbus_message_method_return_new(message);
}

const Eldbus_Method kMethods[] = {
    {"Show", ELDBUS_ARGS({"s", "phone"}, {"s", "pin"}), nullptr, show, 0},
    {"Hide", nullptr, nullptr, hide, 0},
    {nullptr, nullptr, nullptr, nullptr, 0},
};

} // namespace

EAPI_MAIN int elm_main(int, char**)
{
    eldbus_init();
    s_window = elm_win_add(nullptr, "plain", ELM_WIN_BASIC);
    elm_win_alpha_set(s_window, EINA_TRUE);
    elm_win_borderless_set(s_window, EINA_TRUE);
    int width = 0;
    int height = 0;
    elm_win_screen_size_get(s_window, nullptr, nullptr, &width, &height);
    evas_object_resize(s_window, width, height);
    if (elm_win_wl_window_get(s_window)) // which does not tell that size yet
        elm_win_maximized_set(s_window, EINA_TRUE);
    Eldbus_Connection* bus = eldbus_connection_get(ELDBUS_CONNECTION_TYPE_SYSTEM);
    const Eldbus_Service_Interface_Desc description {kName, kMethods, nullptr, nullptr, nullptr, nullptr};
    eldbus_service_interface_register(bus, kPath, &description);
    eldbus_name_request(bus, kName, 0, nullptr, nullptr);
    elm_run();
    eldbus_connection_unref(bus);
    eldbus_shutdown();
    return 0;
}
ELM_MAIN()
