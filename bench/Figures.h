// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Many figures of one thing, and the two of them that are told.
#pragma once

#include <algorithm>
#include <vector>

namespace bench {

class Figures {
public:
    void add(double value) { m_values.push_back(value); }
    bool empty() const { return m_values.empty(); }
    /// @param share  0.5 for the median, 0.95 for what all but the slowest twentieth stay under
    double quantile(double share) const
    {
        if (m_values.empty())
            return 0;
        std::vector<double> sorted = m_values;
        std::sort(sorted.begin(), sorted.end());
        return sorted[static_cast<size_t>(share * static_cast<double>(sorted.size() - 1) + 0.5)];
    }
    double median() const { return quantile(0.5); }

private:
    std::vector<double> m_values;
};

} // namespace bench
