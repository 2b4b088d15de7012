#include "Rules.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace gallery {

namespace {

/// Least size of letters on a screen of 1080 lines, pixels.
constexpr int kSmallestText = 24;

/// Least contrasts of texts.
constexpr double kTextContrast = 7.0;
constexpr double kTextHighContrast = 12.0;

/// Least step in lightness by which a focused button stands out: that for parts of a user interface.
constexpr double kFocusContrast = 3.0;

/// Televisions may cut off this share of the picture on each side.
constexpr double kUnsafe = 0.05;

class Checker {
public:
    Checker(const Scene& scene, const Image& whole, const Image& withoutTexts, const Expected& expected,
        Measured& measured)
        : m_scene(scene)
        , m_whole(whole)
        , m_withoutTexts(withoutTexts)
        , m_expected(expected)
        , m_measured(measured)
    {
    }

    std::vector<Broken> run()
    {
        for (const Text& text : m_scene.texts)
            checkText(text);
        checkInk();
        checkOverlaps();
        checkSafeArea();
        checkFocus();
        return std::move(m_broken);
    }

private:
    void report(const char* rule, const std::string& detail) { m_broken.push_back({rule, detail}); }

    void checkText(const Text& text)
    {
        if (text.plain.find("_SID_") != std::string::npos)
            report("raw-id", text.plain);
        if (text.withoutFont != 0 && !m_expected.mayBeCut)
            report("no-font", text.plain + ": character " + std::to_string(text.withoutFont));
        if (text.isCut && !m_expected.mayBeCut)
            report("ellipsis", text.plain);
        if (!text.box.contains(text.lines))
            report("overflow", text.plain + ": lines " + describe(text.lines) + " in " + describe(text.box));
        const double size = text.sizePx / m_expected.scale;
        if (size < kSmallestText - 0.5)
            report("small-text", text.plain + ": " + number(size) + " px");
        const double least = m_expected.contrast ? kTextHighContrast : kTextContrast;
        const double measured = contrastOf(text);
        m_measured.textContrasts.push_back(measured);
        if (!text.runs.empty() && measured < least && !m_expected.hasOwnLook)
            report("contrast", text.plain + ": " + number(measured) + ":1");
    }

    /// The least over the runs of letters; of a run the strongest pixel counts, which is one that the
    /// letters' edges do not blur.
    double contrastOf(const Text& text) const
    {
        double least = 0;
        for (const Box& run : text.runs) {
            const Box seen = run.cutTo(text.box).cutTo(m_whole.box());
            double strongest = 1;
            for (int y = seen.y; y < seen.bottom(); ++y) {
                for (int x = seen.x; x < seen.right(); ++x) {
                    if (m_whole.at(x, y) != m_withoutTexts.at(x, y))
                        strongest = std::max(strongest, contrast(m_whole.at(x, y), m_withoutTexts.at(x, y)));
                }
            }
            least = least == 0 ? strongest : std::min(least, strongest);
        }
        return least;
    }

    /// Letters are drawn nowhere but in their texts' boxes.
    void checkInk()
    {
        int strayed = 0;
        for (int y = 0; y < m_whole.height; ++y) {
            for (int x = 0; x < m_whole.width; ++x) {
                if (m_whole.at(x, y) != m_withoutTexts.at(x, y) && !isInText(x, y))
                    ++strayed;
            }
        }
        if (strayed > 0)
            report("ink", std::to_string(strayed) + " pixels of letters outside of their texts");
    }

    bool isInText(int x, int y) const
    {
        return std::any_of(m_scene.texts.begin(), m_scene.texts.end(), [&](const Text& text) {
            return text.box.contains({x, y, 1, 1});
        });
    }

    void checkOverlaps()
    {
        const auto& texts = m_scene.texts;
        for (size_t i = 0; i < texts.size(); ++i) {
            for (size_t j = i + 1; j < texts.size(); ++j) {
                if (runsMeet(texts[i], texts[j]))
                    report("overlap", texts[i].plain + " / " + texts[j].plain);
            }
        }
    }

    /// Whether letters are drawn over letters; a line has some room above and below them.
    static bool runsMeet(const Text& one, const Text& other)
    {
        const Box shared = lettersOf(one).cutTo(lettersOf(other));
        return shared.width > 1 && shared.height > 1;
    }

    static Box lettersOf(const Text& text)
    {
        const int room = static_cast<int>(std::lround(text.sizePx * kLineRoom));
        return {text.lines.x, text.lines.y + room, text.lines.width, text.lines.height - 2 * room};
    }

    void checkSafeArea()
    {
        const int side = static_cast<int>(std::lround(m_whole.width * kUnsafe));
        const int edge = static_cast<int>(std::lround(m_whole.height * kUnsafe));
        const Box safe {side, edge, m_whole.width - 2 * side, m_whole.height - 2 * edge};
        if (m_scene.card.isEmpty() || !safe.contains(m_scene.card))
            report("safe-area", "the card is " + describe(m_scene.card));
        for (const Text& text : m_scene.texts) {
            if (!m_scene.card.contains(text.box))
                report("safe-area", text.plain + ": " + describe(text.box) + " is not on the card");
        }
        for (const Button& button : m_scene.buttons) {
            if (!m_scene.card.contains(button.box))
                report("safe-area", button.label + ": " + describe(button.box) + " is not on the card");
        }
    }

    void checkFocus()
    {
        if (m_scene.focused != 1)
            report("focus", std::to_string(m_scene.focused) + " objects are focused");
        for (const Button& button : m_scene.buttons) {
            if (!button.isFocused)
                continue;
            if (!m_expected.focusedLabel.empty() && button.label != m_expected.focusedLabel)
                report("focus", button.label + " instead of " + m_expected.focusedLabel);
            checkFocusLook(button);
        }
    }

    /// In lightness alone, because colours look alike to some viewers and on some screens.
    void checkFocusLook(const Button& focused)
    {
        const uint32_t own = colourOf(focused);
        const int beside = focused.box.x - static_cast<int>(std::lround(kBesidePx * m_expected.scale));
        const Box point = Box {beside, focused.box.y + focused.box.height / 2, 1, 1}.cutTo(m_whole.box());
        double least = point.isEmpty() ? 1 : contrast(own, m_withoutTexts.at(point.x, point.y));
        for (const Button& other : m_scene.buttons) {
            if (!other.isFocused)
                least = std::min(least, contrast(own, colourOf(other)));
        }
        m_measured.focusContrast = least;
        if (least < kFocusContrast)
            report("focus-lightness", focused.label + ": " + number(least) + ":1");
    }

    uint32_t colourOf(const Button& button) const
    {
        const Box middle =
            Box {button.box.x + button.box.width / 2, button.box.y + button.box.height / 2, 1, 1}.cutTo(
                m_withoutTexts.box());
        return middle.isEmpty() ? 0 : m_withoutTexts.at(middle.x, middle.y);
    }

    static std::string describe(const Box& box)
    {
        return std::to_string(box.width) + "x" + std::to_string(box.height) + " at " + std::to_string(box.x)
            + "," + std::to_string(box.y);
    }

    static std::string number(double value)
    {
        char text[32];
        snprintf(text, sizeof text, "%.1f", value);
        return text;
    }

    /// Room above and below the letters in a line, of the letters' size.
    static constexpr double kLineRoom = 0.17;
    /// How far beside a button the card is looked at.
    static constexpr int kBesidePx = 8;

    const Scene& m_scene;
    const Image& m_whole;
    const Image& m_withoutTexts;
    const Expected& m_expected;
    Measured& m_measured;
    std::vector<Broken> m_broken;
};

} // namespace

std::vector<Broken> check(const Scene& scene, const Image& whole, const Image& withoutTexts,
    const Expected& expected, Measured& measured)
{
    return Checker {scene, whole, withoutTexts, expected, measured}.run();
}

} // namespace gallery
