#pragma once

#include "records/run.h"

namespace panelhost {

/// Prints runs to the standard output, one by one. GUI thread.
class RunPrinter
{
public:
    enum class Format {
        Table,
        Json, ///< one object a line
        Csv   ///< with a line of names first
    };

    explicit RunPrinter(Format format) : m_format(format) {}

    void add(const Run &run);
    /// Prints what an empty list needs, too.
    void finish();

private:
    void printHeader();

    Format m_format;
    int m_count = 0;
    bool m_hasHeader = false;
};

/// The columns of the CSV format, as its first line names them, and their values for @p run.
QStringList csvColumns();
QStringList csvValues(const Run &run);

/// @p values as a line of CSV, with line end. Values with commas, quotes or line ends are quoted.
QString csvLine(const QStringList &values);

/// Milliseconds as "1:02:03.4", without hours that are 0.
QString runDurationText(qint64 milliseconds);

}
