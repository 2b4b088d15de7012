// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What a run of the gallery is to picture.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace gallery {

/// In percent; the viewer's setting may be larger.
inline constexpr int kUsualTextSize = 100;

/// One start of the toolkit: language, contrast and screen hold for all its pictures.
struct Combination {
    std::string language; ///< a catalogue's name, for instance "pt_BR"
    bool contrast = false; ///< high contrast
    double scale = 1.0; ///< of a screen of 1080 lines, as it was asked for
    int textSize = kUsualTextSize; ///< percent

    /// Pixels of the screen: 16:9 with a whole number of lines.
    int height() const;
    int width() const;
    /// What those pixels are of a screen of 1080 lines.
    double realScale() const;
    /// Folder name, for instance "ar-contrast-720" or "ar-720-text-130".
    std::string name() const;
};

struct Options {
    std::string folder; ///< where all goes; made if missing
    std::vector<std::string> languages {"en"};
    std::vector<double> scales {1.0};
    std::vector<bool> contrasts {false};
    bool awkwardNames = false; ///< also the popups that hold names, with names that people should not have
    std::vector<int> textSizes {kUsualTextSize};
    std::vector<std::string> states; ///< by name; empty: all
    bool onlyBrokenPictures = false; ///< writes no picture that keeps every rule
    bool quiet = false;
    /// Instead of the installed ones, to look at a change before it is built; empty for those.
    std::string theme; ///< a compiled theme of the widgets
    std::string catalogues; ///< a folder with a folder for each language

    std::vector<Combination> combinations() const;
};

/// @return the names of the installed catalogues, sorted
std::vector<std::string> installedLanguages();

/// Answers --help, and ends the process then.
/// @return nothing when the arguments are wrong, which standard error is told
std::optional<Options> parseOptions(int argc, char** argv);

} // namespace gallery
