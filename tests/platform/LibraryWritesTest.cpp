#include "StoreFixture.h"

#include <glib.h>
#include <set>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// The names that are told of in a folder while this lives.
class Onlooker {
public:
    explicit Onlooker(const std::string& folder)
        : m_inotify(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        inotify_add_watch(m_inotify, folder.c_str(), IN_CREATE | IN_CLOSE_WRITE | IN_MOVE | IN_DELETE);
    }
    Onlooker(const Onlooker&) = delete;
    Onlooker& operator=(const Onlooker&) = delete;
    ~Onlooker() { close(m_inotify); }

    std::set<std::string> names() const
    {
        alignas(inotify_event) char bytes[4096];
        const ssize_t size = read(m_inotify, bytes, sizeof bytes);
        std::set<std::string> names;
        for (ssize_t i = 0; i < size;) {
            const auto* event = reinterpret_cast<const inotify_event*>(bytes + i);
            names.insert(event->name);
            i += static_cast<ssize_t>(sizeof *event + event->len);
        }
        return names;
    }

private:
    int m_inotify;
};

} // namespace

class AWriteOfOurs : public StoreFixture { };

/// As long as this passes the store needs a way of its own to replace a file; see docs/architecture.md.
TEST_F(AWriteOfOurs, DoesWhatTheLibrarysDoesNot)
{
    const std::string path = state() + "/db/k";
    constexpr unsigned kFormerMode = 0604;
    const auto byLibrary = [&] {
        return g_file_set_contents_full(path.c_str(), "int\n2", -1,
                   static_cast<GFileSetContentsFlags>(
                       G_FILE_SET_CONTENTS_CONSISTENT | G_FILE_SET_CONTENTS_DURABLE),
                   0640, nullptr)
            != FALSE;
    };
    const auto byUs = [] { return vconf_set_int("db/k", 2) == VCONF_OK; };
    vconf_set_int("db/k", 1);
    for (const bool isOurs : {true, false}) {
        chmod(path.c_str(), kFormerMode);
        const Onlooker onlooker(state() + "/db");
        EXPECT_TRUE(isOurs ? byUs() : byLibrary());
        int value = 0;
        EXPECT_EQ(vconf_get_int("db/k", &value), VCONF_OK);
        EXPECT_EQ(value, 2);
        const Words all {"a mode of its own", "no other name in the folder"};
        Words found;
        if (modeOf(path) == kFormerMode)
            found.push_back(all[0]);
        if (onlooker.names() == std::set<std::string> {"k"})
            found.push_back(all[1]);
        EXPECT_EQ(found, isOurs ? all : Words {});
    }
}
