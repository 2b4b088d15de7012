// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Settings store: typed values under keys such as "db/menu/language".
///
/// Keys that begin with "db/" survive a reboot (they live below ORBIS_STATE_DIR, by default
/// /var/lib/orbis); keys that begin with "memory/" do not (ORBIS_RUNTIME_DIR, by default /run/orbis).
/// Any other prefix, an empty segment, "." or ".." is refused.
///
/// A write replaces the value atomically: a reader, and a machine that loses power, sees the old value
/// or the new one. Every successful write by any process, one that leaves the value as it was included,
/// reaches every watcher. A burst of writes may be delivered as one change; the last value always is.
///
/// A new key can be read by its owner and its group, and written by its owner (0640, as the umask narrows
/// it); anyone may see its name (folders are made with 0755). A write keeps the mode of the key, and its
/// owner and group where the writer may give them away; in a folder whose setgid bit is set a new key gets
/// the folder's group. A key's file holds 16 MiB at most.
///
/// Where a call fails, errno tells why: EINVAL (no such kind of key), ENAMETOOLONG, ENOENT (not set), EACCES,
/// EFBIG (the value is too large), ENOSPC, EBADMSG (the file holds something else) and what the system says.
/// A write that fails leaves the old value. A text read as a number, or the other way round, is a failure
/// that does not touch errno.
///
/// All functions may be called from the thread that runs the main loop only.
#ifndef ORBIS_VCONF_H
#define ORBIS_VCONF_H

#ifdef __cplusplus
extern "C" {
#endif

/// The result of a call: 0 for success, negative for failure.
enum vconf_result {
    VCONF_OK = 0,
    VCONF_ERROR = -1, ///< no such key, another type, the store cannot be read or written, bad argument
};

/// The key that a change callback is called for; borrowed, valid during the call only.
typedef struct keynode keynode_t;

/// Called from the main loop, never from inside a call of this header.
/// @param node       borrowed; the key that was written or removed
/// @param user_data  the pointer given at registration
typedef void (*vconf_callback_fn)(keynode_t* node, void* user_data);

/// Reads an integer. @p value is left alone unless the call succeeds.
int vconf_get_int(const char* key, int* value);

/// Reads a text. @return a copy that the caller releases with free(), or null on any failure.
char* vconf_get_str(const char* key);

/// Writes an integer; creates the key, or changes its type, where needed.
int vconf_set_int(const char* key, int value);

/// Writes a text (borrowed, NUL-terminated, any bytes).
int vconf_set_str(const char* key, const char* value);

/// Removes a key. Removing a key that does not exist is a failure.
int vconf_unset(const char* key);

/// Watches a key, which need not exist yet; neither need its folder, nor need it be possible to make or
/// enter that now. Several callbacks may watch one key; the same callback may watch a key once only (a second
/// registration fails with EEXIST). Changes are told by Ecore's main loop, which the first watch initialises
/// when the program has not. Where the kernel's limits leave no watches, or the folder's names may not be
/// read, the keys are looked at every two seconds until they can be watched; standard error is told once.
int vconf_notify_key_changed(const char* key, vconf_callback_fn callback, void* user_data);

/// Ends a watch. The callback is not called any more, not even for a change already seen; safe inside
/// the callback itself. Fails when nothing of the kind was registered.
int vconf_ignore_key_changed(const char* key, vconf_callback_fn callback);

/// @return the key's name, borrowed, valid as long as the node; null for a null node.
const char* vconf_keynode_get_name(const keynode_t* node);

/// What a key holds.
enum vconf_type {
    VCONF_TYPE_NONE = 0, ///< no such key, or unreadable
    VCONF_TYPE_INT = 1,
    VCONF_TYPE_STRING = 2,
};

/// @return what @p key holds now.
enum vconf_type vconf_get_type(const char* key);

/// Called for each key found; @p key is borrowed for the call.
typedef void (*vconf_key_fn)(const char* key, void* user_data);

/// Calls @p callback for every key that begins with @p prefix (null or "": all keys), sorted by name.
/// @return how many there were, or VCONF_ERROR for a null callback, or when a folder that may hold such keys
/// cannot be read; no key is told then.
int vconf_list(const char* prefix, vconf_key_fn callback, void* user_data);

#ifdef __cplusplus
}
#endif

#endif
