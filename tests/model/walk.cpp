#include "walk.h"

#include <algorithm>

std::vector<WalkStep> randomWalk(std::mt19937 &random, const std::vector<int> &weights, int count)
{
    std::discrete_distribution<int> operation(weights.begin(), weights.end());
    std::vector<WalkStep> steps;
    for (int i = 0; i < count; ++i) {
        const int next = operation(random);
        steps.push_back({next, static_cast<quint32>(random())});
    }
    return steps;
}

// Leaves out parts of half the length, then of a quarter, and so on, as long as the rest still ends in a difference.
std::vector<WalkStep> shrunkWalk(std::vector<WalkStep> steps, const RunWalk &run)
{
    const auto cut = [&run](std::vector<WalkStep> &walk) {
        const auto found = run(walk);
        if (found)
            walk.resize(found->step + 1);
        return found.has_value();
    };
    cut(steps);
    for (std::size_t length = steps.size() / 2; length > 0;) {
        bool shorter = false;
        for (std::size_t begin = 0; begin + length <= steps.size();) {
            std::vector<WalkStep> rest = steps;
            const auto first = rest.begin() + static_cast<std::ptrdiff_t>(begin);
            rest.erase(first, first + static_cast<std::ptrdiff_t>(length));
            if (cut(rest)) {
                steps = rest;
                shorter = true;
            } else {
                begin += length;
            }
        }
        if (!shorter || length > 1)
            length = std::min(length / 2, steps.size());
    }
    return steps;
}

std::optional<QString> difference(const QStringList &actual, const QStringList &expected)
{
    if (actual == expected)
        return std::nullopt;
    int line = 0;
    while (line < actual.size() && line < expected.size() && actual.at(line) == expected.at(line))
        ++line;
    const auto text = [line](const QStringList &lines) {
        return line < lines.size() ? lines.at(line) : QStringLiteral("nothing");
    };
    return QStringLiteral("line %1\n    actual:   %2\n    expected: %3")
        .arg(line + 1)
        .arg(text(actual), text(expected));
}
