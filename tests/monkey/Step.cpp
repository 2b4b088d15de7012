#include "Step.h"

namespace monkey {

namespace {

std::string escaped(const std::string& text)
{
    std::string result;
    for (const char c : text) {
        switch (c) {
        case '\\':
            result += "\\\\";
            break;
        case '\n':
            result += "\\n";
            break;
        case '\r':
            result += "\\r";
            break;
        case '\t':
            result += "\\t";
            break;
        default:
            result += c;
        }
    }
    return result;
}

std::string unescaped(const std::string& text)
{
    std::string result;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            result += text[i];
            continue;
        }
        const char c = text[++i];
        result += c == 'n' ? '\n' : c == 'r' ? '\r' : c == 't' ? '\t' : c;
    }
    return result;
}

} // namespace

std::string Step::line() const
{
    std::string result = action;
    for (const std::string& argument : arguments)
        result += "\t" + escaped(argument);
    return result;
}

Step Step::fromLine(const std::string& line)
{
    size_t end = line.find('\t');
    Step step {line.substr(0, end), {}};
    while (end != std::string::npos) {
        const size_t begin = end + 1;
        end = line.find('\t', begin);
        step.arguments.push_back(unescaped(line.substr(begin, end == std::string::npos ? end : end - begin)));
    }
    return step;
}

} // namespace monkey
