// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A Wayland compositor without hardware whose screen can change its size.
#ifndef TESSEL_TESTS_SWAY_H
#define TESSEL_TESTS_SWAY_H

#include "Picture.h"
#include "TvBox.h"

namespace tv {

class Sway {
public:
    /// Programs that @p box starts from now on are shown by the compositor, 1920x1080 pixels large.
    /// @param box  borrowed
    /// @throws std::runtime_error when it does not start
    explicit Sway(TvBox& box);

    /// Gives the screen another size, at most the one it began with. @throws std::runtime_error
    void resize(int width, int height) const;

    /// @return what the screen shows. @throws std::runtime_error
    Picture picture() const;
    /// @return the picture once nothing has changed for a moment
    Picture settledPicture() const
    {
        return settled([this] { return picture(); });
    }

private:
    void command(const std::vector<std::string>& arguments) const;

    TvBox& m_box;
    std::unique_ptr<Process> m_process;
    std::string m_socket; ///< on which it takes commands
};

} // namespace tv

#endif
