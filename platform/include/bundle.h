// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Launch bundle: the parameters of a launch, each an argument "key=value".
#ifndef ORBIS_BUNDLE_H
#define ORBIS_BUNDLE_H

#ifdef __cplusplus
extern "C" {
#endif

typedef struct bundle bundle; ///< owned by whoever imported it; released with bundle_free()

/// Reads the arguments after argv[0]. One without "=", or with nothing before it, is named on standard
/// error and skipped; of a key given twice the last value counts.
/// @return a new bundle (empty when there is nothing to read); null only when memory is short
bundle* bundle_import_from_argv(int argc, char** argv);

/// Adds a parameter, replacing one of the same key; both texts are copied.
/// @return 0, or -1 for a null bundle, key or value, or a key that is empty or holds "="
int bundle_add(bundle* b, const char* key, const char* value);

/// @return the value, borrowed until the bundle changes or goes; null when there is none
const char* bundle_get_val(bundle* b, const char* key);

/// Writes the parameters back as arguments, in the order in which their keys came.
/// @param argv  out; a null-terminated array whose [0] is null, kept free for the caller to set. Released
///              with bundle_free_exported_argv(), which leaves [0] to the caller.
/// @return the number of arguments, [0] included; -1 for a null argument, *argv then is untouched
int bundle_export_to_argv(bundle* b, char*** argv);

/// Releases what bundle_export_to_argv() made and nulls *argv; [0] stays the caller's. Null is ignored.
void bundle_free_exported_argv(int argc, char*** argv);

/// Releases the bundle. @return 0, or -1 for null.
int bundle_free(bundle* b);

#ifdef __cplusplus
}
#endif

#endif
