/// One thing that the monkey does, as it stands in a trace.
#ifndef TESSEL_TESTS_STEP_H
#define TESSEL_TESTS_STEP_H

#include <string>
#include <vector>

namespace monkey {

using Arguments = std::vector<std::string>;

struct Step {
    std::string action;
    Arguments arguments;

    /// @return one line: action and arguments behind tabs, what is not plain in them written as in C
    std::string line() const;
    static Step fromLine(const std::string& line);
};

} // namespace monkey

#endif
