#pragma once

#include "records/run.h"

namespace panelhost {

/// Prints runs to the standard output. The columns of a table are as wide as its first rows need; the rows after them
/// are printed one by one. GUI thread.
class RunPrinter
{
public:
    enum class Format {
        Table,
        Json, ///< one object per line
        Csv   ///< with a header line
    };

    static constexpr int MeasuredRows = 1000; ///< number of rows that the widths of the columns depend on

    explicit RunPrinter(Format format) : m_format(format) {}

    void add(const Run &run);
    /// Prints the rows of a table that wait for its widths.
    void flush();
    /// Ends the output. If no run was printed, prints "No runs." (table) or the header line (CSV).
    void finish();

private:
    void printCsvHeader();
    void addRow(const Run &run);
    void printRow(const QStringList &row) const;

    Format m_format;
    int m_count = 0;
    bool m_hasHeader = false;
    QVector<QStringList> m_rows; ///< of the table, until the header is printed
    QVector<int> m_widths;       ///< of its columns
};

/// Return the column names of the CSV format, as in its header line, and the values of @p run in the same order.
QStringList csvColumns();
QStringList csvValues(const Run &run);

/// Returns @p values as a line of CSV, with line end. Values with commas, quotes or line ends are quoted.
QString csvLine(const QStringList &values);

/// Returns @p milliseconds as a text such as "1:02:03.4", or "2:03.4" if it is less than an hour.
QString runDurationText(qint64 milliseconds);

}
