// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Texts.h"

namespace monkey {

namespace {

constexpr const char* kNames[] = {"Anna's phone", "Attic & Garden", "", " ", "anna@example.com",
    "\u0647\u0627\u062a\u0641 \u0644\u064a\u0644\u0649", "\u5ba2\u5385\u7684\u624b\u673a",
    "\U0001F4F1\U0001F468\u200D\U0001F469\u200D\U0001F467 phone",
    "Z\u0300\u0301\u0302\u0303\u0304\u0305\u0306\u0307a\u0308\u0309", "\u202Ereversed\u202C",
    "\u2066\u2067\u2068 open isolates", "broken \xff\xfe\xc3 bytes", "%s%n%d%1$s%99999d",
    "<b>bold</b> <color=#f00>red</color>", "<font_size=400>large", "<item size=2000x2000 href=x></item>",
    "</align></b></font> < & &amp; &lt; &#x41; &bogus; >", "<<<<>>>>", "<a href=anchor><i>unclosed",
    "line\nend\r\ttab\x1b[31m escape\x01", "\"quoted\" 'single' \\back\\slash {\"json\": 1}",
    "../../etc/passwd"};

constexpr const char* kPages[] = {
    "mobileDetection", "pin", "wifi", "sso", "tnc", "success", "disconnect", "nonsense", ""};

constexpr const char* kNoRequests[] = {"", " ", "{", "}", "[]", "null", "42", "\"pin\"", "{\"page\":}",
    "{\"page\":null}", "{\"page\":[\"pin\"]}", "{\"page\":{\"page\":\"pin\"}}", "{'page':'pin'}",
    "{\"page\":\"pin\",\"pin\":[1,2],\"mobilename\":{}}", "{\"page\":\"pin\"} trailing",
    "{\"page\":\"\\ud800\"}", "\xff\xfe", "{\"page\":1e999}", "// only\n",
    "{\"page\":\"tnc\",\"page\":\"pin\"}"};

/// Quoted for JSON, but otherwise as it is.
std::string quoted(const std::string& text)
{
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            result += '\\';
        result += c == '\n' || c == '\r' || c == '\t' ? ' ' : c;
    }
    return result + "\"";
}

} // namespace

std::string someName(Random& random)
{
    constexpr size_t kTimes[] = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 30, 100, 1000};
    std::string name;
    const std::string part = random.chance(90) ? random.pick(kNames) : "<b>x";
    for (size_t times = random.pick(kTimes); times > 0; --times)
        name += part;
    return name;
}

std::string somePin(Random& random)
{
    if (random.chance(15))
        return someName(random);
    std::string pin;
    for (size_t digits = random.chance(90) ? 4 : random.below(20); digits > 0; --digits)
        pin += static_cast<char>('0' + random.below(10));
    return pin;
}

std::string someJson(Random& random)
{
    if (random.chance(20))
        return random.pick(kNoRequests);
    std::string json = std::string("{\"page\":\"") + random.pick(kPages) + "\"";
    for (const char* member : {"mobilename", "ssid", "account"}) {
        if (random.chance(70))
            json += std::string(",\"") + member + "\":" + quoted(someName(random));
    }
    if (random.chance(70))
        json += ",\"pin\":" + (random.chance(50) ? random.numberBelow(10000) : quoted(somePin(random)));
    return json + (random.chance(95) ? "}" : "");
}

} // namespace monkey
