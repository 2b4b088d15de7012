// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Camera.h"

#include "Fonts.h"
#include "Rules.h"
#include "Scene.h"

#include <optional>
#include <utility>
#include <vector>

namespace gallery {

/// Draws the scene without its texts, for as long as the object lives.
class Camera::TextsAway {
public:
    explicit TextsAway(const Scene& scene)
        : m_scene(scene)
    {
        for (const Text& text : scene.texts) {
            Colour& colour = m_colours.emplace_back();
            evas_object_color_get(text.object, &colour.red, &colour.green, &colour.blue, &colour.alpha);
        }
        hide();
    }
    ~TextsAway()
    {
        for (size_t i = 0; i < m_colours.size(); ++i) {
            const Colour& colour = m_colours[i];
            evas_object_color_set(
                m_scene.texts[i].object, colour.red, colour.green, colour.blue, colour.alpha);
        }
    }
    /// Once more, after a theme has set colours.
    void hide() const
    {
        for (const Text& text : m_scene.texts)
            evas_object_color_set(text.object, 0, 0, 0, 0);
    }
    TextsAway(const TextsAway&) = delete;
    TextsAway& operator=(const TextsAway&) = delete;

private:
    struct Colour {
        int red, green, blue, alpha;
    };

    const Scene& m_scene;
    std::vector<Colour> m_colours;
};

namespace {

/// The look alone: the widget keeps the focus.
void setLookOfFocus(const Button& button, bool isFocused)
{
    Evas_Object* look = elm_layout_edje_get(button.object);
    edje_object_signal_emit(look, isFocused ? "elm,action,focus" : "elm,action,unfocus", "elm");
    edje_object_message_signal_process(look);
    edje_object_animation_set(look, EINA_FALSE); // what moves jumps to its end
    edje_object_calc_force(look);
}

} // namespace

Camera::Camera(Evas_Object* window, const Combination& combination, const Options& options)
    : m_window(window)
    , m_combination(combination)
    , m_options(options)
    , m_behind(filmPicture(combination.width(), combination.height()))
{
}

Image Camera::withoutFocus(const Scene& scene, const Image& withoutTexts, const TextsAway& textsAway) const
{
    for (const Button& button : scene.buttons) {
        if (!button.isFocused)
            continue;
        setLookOfFocus(button, false);
        textsAway.hide();
        Image image = grabAgain(m_window, m_behind, withoutTexts, scene.card);
        setLookOfFocus(button, true);
        return image;
    }
    return withoutTexts;
}

Expected Camera::expectedOf(const State& state) const
{
    Expected expected;
    expected.scale = m_combination.realScale();
    expected.textScale = m_combination.textSize / 100.0;
    expected.contrast = m_combination.contrast;
    expected.language = m_combination.language;
    expected.hasAnyCharacter = state.hasAwkwardNames;
    expected.mayBeCut = state.isTooLong;
    expected.hasOwnDirection = state.hasOwnDirection;
    const Names& shown = state.shownNames;
    expected.names = {shown.phone, shown.network, shown.account, shown.tv};
    expected.content = contentOf(state);
    return expected;
}

Picture Camera::take(const State& state)
{
    const Image whole = grab(m_window, m_behind);
    Scene scene = look(m_window, m_reference);
    Box around = scene.card;
    for (const Text& text : scene.texts)
        around.add(text.mask.box);
    std::optional<TextsAway> textsAway {std::in_place, scene};
    const Image withoutTexts = grabAgain(m_window, m_behind, whole, around);
    const Image unfocused = withoutFocus(scene, withoutTexts, *textsAway);
    textsAway.reset();
    for (Text& text : scene.texts)
        findOtherFonts(text, m_combination.language, whole, withoutTexts, m_reference);
    Picture picture;
    picture.state = state.name;
    picture.file = m_combination.name() + "/" + state.name + ".png";
    picture.broken = check(scene, {whole, withoutTexts, unfocused}, expectedOf(state), picture.measured);
    picture.scene = std::move(scene);
    if (!m_options.onlyBrokenPictures || !picture.broken.empty()) {
        picture.isWritten = savePng(whole, m_options.folder + "/" + picture.file);
        if (!picture.isWritten)
            picture.broken.push_back({"file", "cannot write " + picture.file});
    }
    return picture;
}

} // namespace gallery
