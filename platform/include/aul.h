// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Application status: which applications run, and which of them the viewer sees.
///
/// The file "apps/<package>" in ORBIS_RUNTIME_DIR (by default /run/orbis) holds "PID STATUS" in decimal. An
/// application is running while that process is alive. ui_app_main() keeps the entry of its own process.
///
/// An entry that is written here tells in the time of its file when the process was started, counted from
/// the machine's start, so that a later process that got the same number is not taken for the application.
/// One that other programs write has an ordinary time, and only its number is looked at. Whoever may write in
/// the folder can forge any entry: it belongs to one user, and no other may write there.
#ifndef ORBIS_AUL_H
#define ORBIS_AUL_H

#ifdef __cplusplus
extern "C" {
#endif

/// Status of an application, numbered as on the devices.
enum aul_app_status {
    STATUS_LAUNCHING = 0,
    STATUS_CREATED = 1,
    STATUS_FOCUS = 2, ///< has the keys
    STATUS_VISIBLE = 3, ///< on the screen without the keys
    STATUS_BG = 4, ///< runs, not on the screen
};

/// @return 1 while the application runs; 0 when it does not, and for a null, empty or unusable name.
int aul_app_is_running(const char* package);

/// @return one of aul_app_status, or -1 when the application does not run or the name is unusable.
int aul_app_get_status(const char* package);

/// Writes the entry of the calling process, readable by everyone as the umask narrows it, at once or not at
/// all. @return 0, or -1 (unusable name, or the folder cannot be written).
int aul_app_set_status(const char* package, enum aul_app_status status);

/// Removes the entry of the calling process; an entry of another live process stays.
/// @return 0, or -1 when there is none of this process.
int aul_app_remove_status(const char* package);

#ifdef __cplusplus
}
#endif

#endif
