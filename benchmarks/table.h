#pragma once

#include <algorithm>
#include <cstdio>
#include <vector>

namespace zenvor::bench {

inline double quantile(std::vector<double> values, double part)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[size_t(part * double(values.size() - 1))];
}

inline double median(const std::vector<double> &values)
{
    return quantile(values, 0.5);
}

inline void printHeader(const char *title)
{
    std::printf("\n%-44s %9s %9s %9s\n", title, "median", "10 %", "90 %");
}

inline void printRow(const char *name, const std::vector<double> &values)
{
    std::printf("  %-42s %9.2f %9.2f %9.2f\n", name, median(values), quantile(values, 0.1),
                quantile(values, 0.9));
}

} // namespace zenvor::bench
