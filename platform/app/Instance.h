/// One running instance of an application.
#pragma once

#include <Ecore.h>

#include <functional>
#include <string>
#include <vector>

namespace orbis::app {

/// The claim to be the one running instance of an application, and the way by which a later launch hands its
/// parameters over: a datagram to a socket in the runtime folder, guarded by a file lock that the system
/// drops with the process. Main loop only.
class Instance {
public:
    using Parameters = std::vector<std::string>; ///< each "key=value"
    using Handler = std::function<void(const Parameters&)>;

    enum class Claim {
        First, ///< this process is the instance
        Handed, ///< another is; it has been given the parameters
        Unknown, ///< the runtime folder cannot be used: nobody can tell
    };

    Instance() = default;
    ~Instance();
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    /// Tries to become the instance of @p application; hands @p parameters over when another process is.
    Claim claim(const std::string& application, const Parameters& parameters);

    /// Calls @p handler from the main loop for every later launch; an empty one ends that. To be ended before
    /// Ecore is shut down.
    void listen(Handler handler);

private:
    static Eina_Bool on_readable(void* data, Ecore_Fd_Handler*);

    bool bindSocket(int folder, const std::string& name);

    int m_lock = -1;
    int m_socket = -1;
    Ecore_Fd_Handler* m_readable = nullptr;
    Handler m_handler;
};

} // namespace orbis::app
