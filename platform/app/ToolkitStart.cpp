#include "app/ToolkitStart.h"

#include "app/Fonts.h"

#include <Efreet.h>
#include <Elementary.h>

#include <cstdlib>
#include <optional>
#include <string>

namespace orbis::app {

namespace {

/// How much freed memory the toolkit may hold back, bytes. It does so to find its own faults, 32 MB of it,
/// and a popup frees some 20 KB; it lets go of the rest whenever the loop is idle.
constexpr std::size_t kMostFreed = std::size_t {256} * 1024;

/// An environment variable that is set only as long as this lives: children are to get what was there.
class Variable {
public:
    Variable(const char* name, const char* value)
        : m_name(name)
    {
        if (const char* former = getenv(name))
            m_former = former;
        setenv(name, value, 1);
    }
    ~Variable()
    {
        if (m_former)
            setenv(m_name, m_former->c_str(), 1);
        else
            unsetenv(m_name);
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* m_name;
    std::optional<std::string> m_former;
};

} // namespace

/// The toolkit's defaults serve a desktop: they start helper processes and open the system bus. What the
/// environment says already is left alone.
bool startLoop()
{
    setenv("ECORE_NO_SYSTEM_MODULES", "1", 0);
    chooseFonts();
    // Told of no folder for sockets the toolkit makes one in HOME, and ends the process when it cannot. It
    // has no use for one here.
    std::optional<Variable> folder;
    if (!getenv("XDG_RUNTIME_DIR"))
        folder.emplace("XDG_RUNTIME_DIR", "/");
    return ecore_init() > 0;
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
