#include "app/ToolkitStart.h"

#include "app/Fonts.h"
#include "loop/LoopStart.h"

#include <Efreet.h>
#include <Elementary.h>

#include <cstddef>
#include <cstdlib>

namespace orbis::app {

namespace {

/// How much freed memory the toolkit may hold back, bytes. It does so to find its own faults, 32 MB of it,
/// and a popup frees some 20 KB; it lets go of the rest whenever the loop is idle.
constexpr std::size_t kMostFreed = std::size_t {256} * 1024;

} // namespace

/// The toolkit's defaults serve a desktop: they start helper processes and open the system bus. What the
/// environment says already is left alone.
bool startLoop()
{
    setenv("ECORE_NO_SYSTEM_MODULES", "1", 0);
    // A popup's pictures are small and few: handing them to another thread costs more than it saves.
    setenv("ECORE_EVAS_FORCE_SYNC_RENDER", "1", 0);
    // A popup is drawn once or twice: scaled copies of its shadow and edge would be two megabytes for nothing.
    setenv("EVAS_SCALECACHE_MIN_USES", "1000000", 0);
    chooseFonts();
    return loop::start();
}

bool startToolkit(int argc, char** argv)
{
    efreet_cache_disable();
    if (elm_init(argc, argv) <= 0)
        return false;
    eina_freeq_mem_max_set(eina_freeq_main_get(), kMostFreed);
    return true;
}

} // namespace orbis::app
