#include "StoreFixture.h"

#include <Ecore.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>

namespace {

struct DeleteTimer {
    void operator()(Ecore_Timer* timer) const { ecore_timer_del(timer); }
};

Eina_Bool on_tick(void*)
{
    return ECORE_CALLBACK_RENEW;
}

} // namespace

void StoreFixture::SetUp()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "platform-test-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    m_folder = pattern;
    setenv("ORBIS_STATE_DIR", state().c_str(), 1);
    setenv("ORBIS_RUNTIME_DIR", runtime().c_str(), 1);
}

void StoreFixture::TearDown()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_folder, ignored);
}

bool runUntil(const std::function<bool()>& condition, double seconds)
{
    constexpr double kTick = 0.05; // the loop wakes for the deadline
    const std::unique_ptr<Ecore_Timer, DeleteTimer> timer(ecore_timer_add(kTick, on_tick, nullptr));
    const double deadline = ecore_time_get() + seconds;
    while (!condition()) {
        if (ecore_time_get() > deadline)
            return false;
        ecore_main_loop_iterate_may_block(1);
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
    char* value = vconf_get_str(key.c_str());
    std::optional<std::string> result;
    if (value)
        result = value;
    std::free(value);
    return result;
}

std::string contentsOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void writeFile(const std::string& path, const std::string& contents)
{
    std::ofstream(path, std::ios::binary) << contents;
}
