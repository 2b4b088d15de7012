#include "StoreFixture.h"
#include "base/Handles.h"

#include <Ecore.h>
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

/// The search for leaks stops a process to look at it, which a change of user and a box prevent.
Words withoutLeakSearch(Words environment)
{
    const auto isOption = [](const std::string& variable) { return variable.rfind("ASAN_OPTIONS=", 0) == 0; };
    environment.erase(std::remove_if(environment.begin(), environment.end(), isOption), environment.end());
    environment.emplace_back("ASAN_OPTIONS=detect_leaks=0");
    return environment;
}

} // namespace

StoreFixture::StoreFixture()
{
    // The store makes its folders itself.
    std::filesystem::remove(state());
    std::filesystem::remove(runtime());
}

std::unique_ptr<tv::Process> StoreFixture::tool(Words arguments) const
{
    arguments.insert(arguments.begin(), ORBIS_SETTINGS_TOOL);
    const Words environment = m_folders.environment();
    return std::make_unique<tv::Process>(
        arguments, geteuid() == 0 ? environment : withoutLeakSearch(environment));
}

std::unique_ptr<tv::Process> StoreFixture::box() const
{
    auto shell = std::make_unique<tv::Process>(
        Words {"unshare", "-Urmpf", "--kill-child", "sh"}, withoutLeakSearch(m_folders.environment()));
    shell->tell("settings() { " ORBIS_SETTINGS_TOOL " \"$@\"; }");
    return shell;
}

bool StoreFixture::allowsBoxes()
{
    const tv::Folders folders;
    const Words tried {"unshare", "-Urmpf", "sh", "-c",
        "mount -t tmpfs none \"$HOME\" && exec 9<>/proc/sys/user/max_inotify_watches"};
    return tv::Process(tried, folders.environment()).waitForExit() == 0;
}

Unprivileged::Unprivileged(const std::string& folder)
{
    constexpr id_t kNobody = 65534;
    if (geteuid() != 0)
        return;
    EXPECT_EQ(lchown(folder.c_str(), kNobody, kNobody), 0);
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        EXPECT_EQ(lchown(entry.path().c_str(), kNobody, kNobody), 0);
    m_groups.resize(static_cast<size_t>(getgroups(0, nullptr)));
    getgroups(static_cast<int>(m_groups.size()), m_groups.data());
    EXPECT_TRUE(setgroups(0, nullptr) == 0 && setegid(kNobody) == 0 && seteuid(kNobody) == 0);
}

Unprivileged::~Unprivileged()
{
    if (getuid() != 0)
        return;
    EXPECT_TRUE(seteuid(0) == 0 && setegid(0) == 0 && setgroups(m_groups.size(), m_groups.data()) == 0);
}

unsigned modeOf(const std::string& path)
{
    struct stat status = {};
    return lstat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
}

Words namesIn(const std::string& folder)
{
    Words names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

bool runUntil(const std::function<bool()>& condition, double seconds)
{
    const double deadline = ecore_time_get() + seconds;
    while (!condition()) {
        if (ecore_time_get() > deadline)
            return false;
        ecore_main_loop_iterate();
        usleep(1000); // it may sleep through the deadline
    }
    return true;
}

Watch::Watch(const std::string& key, std::function<void()> action, vconf_callback_fn callback)
    : m_key(key)
    , m_action(std::move(action))
    , m_callback(callback)
    , m_active(vconf_notify_key_changed(key.c_str(), callback, this) == VCONF_OK)
{
}

void Watch::on_changed(keynode_t* node, void* data)
{
    auto* self = static_cast<Watch*>(data);
    EXPECT_EQ(vconf_keynode_get_name(node), self->m_key);
    ++self->m_calls;
    if (self->m_action)
        self->m_action();
}

int Watch::end()
{
    if (!m_active)
        return VCONF_ERROR;
    m_active = false;
    return vconf_ignore_key_changed(m_key.c_str(), m_callback);
}

bool Watch::called(int times) const
{
    return runUntil([=] { return m_calls >= times; });
}

void settle()
{
    // Every key of an area is looked at whenever anything happens in it.
    const Watch db("db/settle");
    const Watch memory("memory/settle");
    vconf_set_int("db/settle", 1);
    vconf_set_int("memory/settle", 1);
    EXPECT_TRUE(db.called() && memory.called());
}

std::optional<std::string> text(const std::string& key)
{
    const base::MallocStr value(vconf_get_str(key.c_str()));
    return value ? std::make_optional<std::string>(value.get()) : std::nullopt;
}

bool listens(const tv::Process& tool, const char* key)
{
    return tv::waitUntil([&] {
        vconf_set_int(key, 0);
        return !tool.output().empty();
    });
}
