#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <functional>

namespace panelhost {

/// Writes files to a USB stick, part by part. They are written under temporary names, and get their final names when
/// all of them are complete and on the stick. The destructor removes temporary files. If the process is killed, they
/// stay until the next export removes them. Any thread, one at a time.
class ExportWriter
{
public:
    struct File
    {
        QString suffix; ///< the name is "lcd-logs-<number><suffix>"
        QByteArray content;
    };
    using Collect = std::function<QVector<File>()>;

    enum class State {
        Writing,
        Done,
        Failed
    };

    static constexpr int Parts = 10; ///< into which the data are divided

    /// Faults of a simulated stick.
    struct StickFaults
    {
        bool isMissing = false;
        bool isReadOnly = false;
        bool isFull = false; ///< there is room for half of the data
    };

    /// @p directory is where the stick is mounted; empty if there is none. @p collect is called once, by the first
    /// writeNext().
    ExportWriter(const QString &directory, const Collect &collect);
    ~ExportWriter();
    ExportWriter(const ExportWriter &) = delete;
    ExportWriter &operator=(const ExportWriter &) = delete;

    /// Does the next part of the work. Does nothing when the export has ended.
    void writeNext(const StickFaults &faults);

    State state() const { return m_state; }
    int percent() const;
    /// Returns the errno value of the failure.
    int error() const { return m_error; }
    /// Returns the names of the files.
    QStringList names() const;

private:
    struct Output
    {
        QString name;
        QByteArray temporary; ///< path; empty if there is no such file
        QByteArray content;
        int descriptor = -1;
        int written = 0;
    };

    void begin();
    int openOutput(Output &output);
    int makeTemporary(Output &output) const;
    int writePart(Output &output, int size);
    void finish();
    int rename();
    void fail(int number);
    int simulatedError() const;
    QByteArray pathOf(const QString &name) const;

    const QString m_directory;
    const Collect m_collect;
    StickFaults m_faults;
    State m_state = State::Writing;
    int m_error = 0;
    bool m_hasBegun = false;
    qint64 m_size = 0;
    qint64 m_written = 0;
    QVector<Output> m_outputs;
};

}
