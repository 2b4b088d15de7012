/// A Wayland compositor without hardware.
#ifndef TESSEL_TESTS_WESTON_H
#define TESSEL_TESTS_WESTON_H

#include "TvBox.h"

namespace tv {

class Weston {
public:
    /// Programs that @p box starts from now on are shown by the compositor, which begins with its screen on.
    /// @param idleSeconds  after so long without a key its screen goes off; 0: never
    /// @throws std::runtime_error when it does not start
    Weston(TvBox& box, int idleSeconds);

    const Process& process() const { return *m_process; }

private:
    std::unique_ptr<Process> m_process;
};

} // namespace tv

#endif
