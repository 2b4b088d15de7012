/// Owners of the C handles that the test support holds.
#ifndef TESSEL_TESTS_HANDLES_H
#define TESSEL_TESTS_HANDLES_H

#include <gio/gio.h>

#include <memory>
#include <type_traits>
#include <utility>

#include <unistd.h>

namespace tv {

template <typename T, auto Free>
using CHandle = std::unique_ptr<T, std::integral_constant<decltype(Free), Free>>;
template <typename T>
using ObjectPtr = CHandle<T, g_object_unref>;

using GText = CHandle<char, g_free>; ///< from GLib
using ErrorPtr = CHandle<GError, g_error_free>;
using VariantPtr = CHandle<GVariant, g_variant_unref>;
using NodeInfoPtr = CHandle<GDBusNodeInfo, g_dbus_node_info_unref>;
using ConnectionPtr = ObjectPtr<GDBusConnection>;

/// A GLib event source of the default main context; removed with its owner.
class Source {
public:
    explicit Source(guint id = 0)
        : m_id(id)
    {
    }
    Source(Source&& other) noexcept
        : m_id(std::exchange(other.m_id, 0))
    {
    }
    Source& operator=(Source&& other) noexcept
    {
        std::swap(m_id, other.m_id);
        return *this;
    }
    ~Source()
    {
        if (m_id)
            g_source_remove(m_id);
    }
    /// Forgets a source that removes itself by what its callback returns.
    void forget() { m_id = 0; }

private:
    guint m_id;
};

} // namespace tv

#endif
