#include "Step.h"

#include "Handles.h"

namespace monkey {

std::string Step::line() const
{
    std::string result = action;
    for (const std::string& argument : arguments)
        result.append("\t").append(base::GStr(g_strescape(argument.c_str(), nullptr)).get());
    return result;
}

Step Step::fromLine(const std::string& line)
{
    const std::unique_ptr<char*, decltype(&g_strfreev)> words(g_strsplit(line.c_str(), "\t", -1), g_strfreev);
    Step step;
    step.action = line.substr(0, line.find('\t'));
    for (size_t i = 1; i < g_strv_length(words.get()); ++i)
        step.arguments.emplace_back(base::GStr(g_strcompress(words.get()[i])).get());
    return step;
}

} // namespace monkey
