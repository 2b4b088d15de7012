// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The files of the settings store, whatever they hold and are called.
#include "Fuzz.h"
#include "base/Handles.h"
#include "vconf.h"

#include <cstdlib>
#include <fstream>
#include <unistd.h>

namespace {

void writeFile(const std::string& name, const std::string& bytes)
{
    std::ofstream(fuzz::keysFolder() + "/" + name) << bytes;
}

/// The reader must take what is right and nothing else.
void checkValue(const std::string& bytes)
{
    writeFile("value", bytes);
    int number = 0;
    const bool isNumber = vconf_get_int("db/value", &number) == VCONF_OK;
    const base::MallocStr text {vconf_get_str("db/value")};
    fuzz::demand(!isNumber || !text, "one type at a time", bytes);
    if (isNumber)
        fuzz::demand(std::atoll(bytes.c_str() + 4) == number && bytes.compare(0, 4, "int\n") == 0,
            "the number is the file's", bytes);
    if (text)
        fuzz::demand(bytes == std::string("string\n") + text.get(), "the text is the file's", bytes);
    else if (bytes.compare(0, 7, "string\n") == 0)
        fuzz::demand(bytes.find('\0') != std::string::npos, "a text without NUL is taken", bytes);
}

void checkName(const std::string& name)
{
    if (name.empty() || name.size() > 255 || name.find('/') != std::string::npos || name == "."
        || name == ".." || name == "value")
        return;
    writeFile(name, "int\n7");
    vconf_list(
        "db/",
        [](const char* key, void*) {
            int value = 0;
            fuzz::demand(
                std::string(key) == "db/value" || (vconf_get_int(key, &value) == VCONF_OK && value == 7),
                "a key that is listed can be read", key);
        },
        nullptr);
    unlink((fuzz::keysFolder() + "/" + name).c_str());
}

void checkKey(const std::string& key)
{
    if (vconf_set_str(key.c_str(), "here") != VCONF_OK)
        return;
    const base::MallocStr text {vconf_get_str(key.c_str())};
    fuzz::demand(text && std::string("here") == text.get(), "what was written can be read", key);
    vconf_unset(key.c_str());
}

} // namespace

void fuzz::tryInput(Input& input)
{
    switch (input.number(4)) {
    case 0:
        checkName(input.text());
        break;
    case 1:
        checkKey(input.text());
        break;
    default:
        checkValue(input.rest());
    }
}
