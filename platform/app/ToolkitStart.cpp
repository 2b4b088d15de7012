// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "app/ToolkitStart.h"

#include "app/Fonts.h"
#include "dlog.h"
#include "files/WholeFile.h"
#include "loop/LoopStart.h"
#include "names/LogTag.h"
#include "names/Places.h"
#include "toolkit-digest.h"

#include <Efreet.h>
#include <Elementary.h>

#include <cstddef>
#include <cstdlib>
#include <string>

namespace orbis::app {

namespace {

/// How much freed memory the toolkit may hold back, bytes. It does so to find its own faults, 32 MB of it,
/// and a popup frees some 20 KB; it lets go of the rest whenever the loop is idle.
constexpr std::size_t kMostFreed = std::size_t {256} * 1024;

/// Where the toolkit looks for its data and its modules.
constexpr const char* kDataVariable = "ELM_DATA_DIR";
constexpr const char* kLibrariesVariable = "ELM_LIB_DIR";

} // namespace

/// The toolkit's defaults serve a desktop: they start helper processes and open the system bus. What the
/// environment says already is left alone.
bool startLoop()
{
    setenv("ECORE_NO_SYSTEM_MODULES", "1", 0);
    // A popup's pictures are small and few: handing them to another thread costs more than it saves.
    setenv("ECORE_EVAS_FORCE_SYNC_RENDER", "1", 0);
    // A popup is drawn once or twice: scaled copies of its shadow and edge would be two megabytes for
    // nothing.
    setenv("EVAS_SCALECACHE_MIN_USES", "1000000", 0);
    // The loop times motions, with as few pictures as it is asked for; a graphics driver would have a thread
    // that tells of each picture of the screen.
    setenv("ECORE_NO_VSYNC", "1", 0);
    chooseFonts();
    return loop::start();
}

bool startToolkit(int argc, char** argv)
{
    efreet_cache_disable();
    const std::string fault =
        files::faultOfInstalledFile(std::string {names::kToolkitFolder} + "/themes/default.edj",
            ORBIS_TOOLKIT_SIZE, ORBIS_TOOLKIT_DIGEST);
    if (!fault.empty())
        dlog_print(DLOG_ERROR, names::kLogTag,
            "The toolkit's small theme cannot be used, it starts with its own: %s: %s", names::kToolkitFolder,
            fault.c_str());
    const bool isOurs = fault.empty() && !getenv(kDataVariable);
    if (isOurs) {
        setenv(kDataVariable, names::kToolkitFolder, 1);
        setenv(kLibrariesVariable, ORBIS_TOOLKIT_LIBRARIES, 1); // or it would look for them beside the data
    }
    const bool isStarted = elm_init(argc, argv) > 0;
    if (isOurs) { // children are to get what was there
        unsetenv(kDataVariable);
        unsetenv(kLibrariesVariable);
    }
    if (isStarted)
        eina_freeq_mem_max_set(eina_freeq_main_get(), kMostFreed);
    return isStarted;
}

} // namespace orbis::app
