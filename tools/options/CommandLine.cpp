// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "options/CommandLine.h"

#include "base/GlibHandles.h"
#include "base/Version.h"
#include "options/Completion.h"
#include "options/Terminal.h"

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace tools {

/// What the library calls for each option and argument.
struct CommandLine::Callback {
    static gboolean onOption(const char* written, const char* value, gpointer data, GError** error) noexcept
    {
        auto* self = static_cast<CommandLine*>(data);
        const std::string name = written;
        const auto option =
            std::find_if(self->m_options.begin(), self->m_options.end(), [&](const Option& each) {
                return name == std::string("--") + each.name || name == std::string("-") + each.letter;
            });
        const std::string problem = option->take(value ? value : "");
        if (!problem.empty())
            g_set_error(error, G_OPTION_ERROR, G_OPTION_ERROR_BAD_VALUE, "%s: %s", written, problem.c_str());
        return problem.empty();
    }

    static gboolean onArgument(const char*, const char* value, gpointer data, GError** error) noexcept
    {
        auto* self = static_cast<CommandLine*>(data);
        if (self->m_parameters.empty())
            g_set_error(
                error, G_OPTION_ERROR, G_OPTION_ERROR_UNKNOWN_OPTION, "Unexpected argument %s", value);
        else
            self->m_rest.emplace_back(value);
        return !self->m_parameters.empty();
    }

    static GOptionEntry entryOf(const Option& option)
    {
        // Values are taken byte for byte, whatever the character set of the user is.
        int flags = G_OPTION_FLAG_FILENAME;
        if (!option.help)
            flags |= G_OPTION_FLAG_HIDDEN;
        if (!option.value)
            flags |= G_OPTION_FLAG_NO_ARG;
        else if (option.isValueOptional)
            flags |= G_OPTION_FLAG_OPTIONAL_ARG;
        return {option.name, option.letter, flags, G_OPTION_ARG_CALLBACK,
            reinterpret_cast<gpointer>(onOption), option.help, option.value};
    }
};

CommandLine::CommandLine(std::string tool, std::string parameters, std::string description)
    : m_tool(std::move(tool))
    , m_parameters(std::move(parameters))
    , m_description(std::move(description))
{
}

/// Ends the process with the text.
static void answer(const std::string& text)
{
    const bool isWritten = fputs(text.c_str(), stdout) >= 0 && fflush(stdout) == 0;
    exit(isWritten ? EXIT_SUCCESS : EXIT_FAILURE);
}

/// What every tool has.
void CommandLine::addOwnOptions()
{
    if (m_tool.find(' ') != std::string::npos)
        return;
    Option version {"version", {}, "print the version"};
    version.take = [this](const std::string&) {
        answer(m_tool + " " TESSEL_VERSION "\n");
        return std::string();
    };
    add(std::move(version));
    // Not for people: what a shell is told is installed with the tool.
    Option completion {"completion", {}, nullptr, "SHELL"};
    completion.take = [this](const std::string& shell) -> std::string {
        const auto script = completionFor(shell, {m_tool, m_options, m_commands, m_argumentChoices});
        if (script)
            answer(*script);
        return "neither bash, zsh nor fish";
    };
    add(std::move(completion));
}

std::string CommandLine::description() const
{
    std::string text;
    for (const Command& command : m_commands) {
        constexpr size_t kWidth = 34;
        std::string usage =
            std::string(command.name).append(*command.arguments ? " " : "").append(command.arguments);
        usage.resize(std::max(usage.size() + 1, kWidth), ' ');
        text.append(text.empty() ? "Commands:\n" : "")
            .append("  ")
            .append(usage)
            .append(command.help)
            .append("\n");
    }
    text.append(text.empty() || m_description.empty() ? "" : "\n").append(m_description);
    if (!m_statuses.empty())
        text += text.empty() ? "Exit status:\n" : "\n\nExit status:\n";
    for (const auto& [status, meaning] : m_statuses)
        text.append("  ").append(std::to_string(status)).append("  ").append(meaning).append("\n");
    return text;
}

std::optional<std::vector<std::string>> CommandLine::parse(const std::vector<std::string>& arguments)
{
    setlocale(LC_CTYPE, ""); // for the help's characters
    addOwnOptions();
    std::vector<GOptionEntry> entries;
    std::transform(m_options.begin(), m_options.end(), std::back_inserter(entries), Callback::entryOf);
    entries.push_back({G_OPTION_REMAINING, '\0', G_OPTION_FLAG_FILENAME, G_OPTION_ARG_CALLBACK,
        reinterpret_cast<gpointer>(Callback::onArgument), nullptr, nullptr});
    entries.push_back({});

    const base::OptionContextPtr context(
        g_option_context_new(m_parameters.empty() ? nullptr : m_parameters.c_str()));
    GOptionGroup* group = g_option_group_new(nullptr, nullptr, nullptr, this, nullptr);
    g_option_group_add_entries(group, entries.data());
    g_option_context_set_main_group(context.get(), group); // which takes it over
    const std::string end = description();
    if (!end.empty())
        g_option_context_set_description(context.get(), end.c_str());
    g_option_context_set_strict_posix(context.get(), m_stopsEarly);

    g_set_prgname(m_tool.c_str());
    char** words = g_new0(char*, arguments.size() + 2);
    words[0] = g_strdup(m_tool.c_str());
    for (size_t index = 0; index < arguments.size(); ++index)
        words[index + 1] = g_strdup(arguments[index].c_str());
    m_rest.clear();
    GError* rawError = nullptr;
    g_option_context_parse_strv(context.get(), &words, &rawError);
    const base::StrvPtr left(words); // which the library may have moved
    const base::ErrorPtr error(rawError);
    if (!error)
        return m_rest;
    wrongUsage(error->message);
    return std::nullopt;
}

int CommandLine::wrongUsage(const std::string& problem) const
{
    complain(m_tool, problem);
    fprintf(stderr, "Try: %s --help\n", m_tool.c_str());
    return kWrongUsage;
}

std::function<std::string(const std::string&)> setFlag(bool& flag)
{
    return [&flag](const std::string&) {
        flag = true;
        return std::string();
    };
}

std::function<std::string(const std::string&)> setText(std::string& text)
{
    return [&text](const std::string& value) {
        text = value;
        return std::string();
    };
}

std::function<std::string(const std::string&)> addText(std::vector<std::string>& texts)
{
    return [&texts](const std::string& value) {
        texts.push_back(value);
        return std::string();
    };
}

std::vector<std::string> argumentsOf(int argc, char** argv)
{
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

} // namespace tools
