#include "options/CommandLine.h"

#include "base/GlibHandles.h"

#include <algorithm>
#include <clocale>
#include <cstdio>
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

std::optional<std::vector<std::string>> CommandLine::parse(const std::vector<std::string>& arguments)
{
    setlocale(LC_CTYPE, ""); // for the help's characters
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
    if (!m_description.empty())
        g_option_context_set_description(context.get(), m_description.c_str());
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
    fprintf(stderr, "%s: %s\nTry: %s --help\n", m_tool.c_str(), problem.c_str(), m_tool.c_str());
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
