#pragma once

#include <QtCore/QStringList>

#include <functional>
#include <optional>
#include <random>
#include <vector>

/// One step of a random walk: an operation or an event, by its place in a table, and what it takes.
struct WalkStep
{
    int operation;
    quint32 value;
};

/// The first step after which the component and the model differ.
struct WalkDifference
{
    std::size_t step;
    QString text;
};

/// Carries out the steps from the beginning, with new objects, up to the first difference.
using RunWalk = std::function<std::optional<WalkDifference>(const std::vector<WalkStep> &)>;

/// Returns @p count random steps. Operation i is as frequent as @p weights[i].
std::vector<WalkStep> randomWalk(std::mt19937 &random, const std::vector<int> &weights, int count);

/// Returns a part of @p steps, as short as possible, that still ends in a difference.
std::vector<WalkStep> shrunkWalk(std::vector<WalkStep> steps, const RunWalk &run);

/// Returns where two lists of lines differ, and nothing if they don't.
std::optional<QString> difference(const QStringList &actual, const QStringList &expected);
