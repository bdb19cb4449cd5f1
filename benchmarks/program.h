#pragma once

#include <QtCore/QByteArray>

#include <vector>

/// What a program used.
struct Usage
{
    bool hasSucceeded = false;
    double seconds = 0;   ///< of processor time
    double mebibytes = 0; ///< of memory at most
    QByteArray output;
};

/// Runs a program to its end and returns what it used.
Usage runProgram(std::vector<QByteArray> arguments);
