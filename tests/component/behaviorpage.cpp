#include "behaviorpage.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

#include <algorithm>

namespace {

const QString PageName = QStringLiteral("docs/behavior.md");

QStringList cellsOf(const QString &line)
{
    QStringList cells = line.trimmed().split(QLatin1Char('|'));
    cells.removeFirst();
    cells.removeLast();
    for (QString &cell : cells)
        cell = cell.trimmed();
    return cells;
}

bool isSeparator(const QString &line)
{
    static const QRegularExpression pattern(QStringLiteral("^\\|(\\s*:?-+:?\\s*\\|)+$"));
    return pattern.match(line.trimmed()).hasMatch();
}

/// Reads the page line by line. Text before the first section is the introduction.
class Reader
{
public:
    void read(const QString &line, int number)
    {
        m_place = QStringLiteral("%1:%2: ").arg(PageName).arg(number);
        if (line.startsWith(QLatin1String("## ")))
            m_section = line.mid(3);
        else if (line.startsWith(QLatin1String("**")) && !m_inParagraph)
            readHeading(line);
        else if (line.startsWith(QLatin1Char('|')))
            readTableLine(line);
        else if (!line.trimmed().isEmpty() && !m_section.isEmpty() && !isInStatement())
            m_page.problems << m_place + QStringLiteral("text outside a statement");
        m_inTable = line.startsWith(QLatin1Char('|'));
        m_inParagraph = !line.trimmed().isEmpty();
    }
    BehaviorPage page() const { return m_page; }

private:
    bool isInStatement() const { return !m_page.statements.empty() && m_page.statements.back().section == m_section; }

    void readHeading(const QString &line)
    {
        static const QRegularExpression pattern(QStringLiteral("^\\*\\*(.+)\\.\\*\\* \\S"));
        const QRegularExpressionMatch match = pattern.match(line);
        if (m_section.isEmpty() || !match.hasMatch())
            m_page.problems << m_place + QStringLiteral("a statement is \"**Sentence.** More text\" in a section");
        else
            m_page.statements.push_back({m_section, match.captured(1), {}});
    }

    void readTableLine(const QString &line)
    {
        if (!isInStatement()) {
            m_page.problems << m_place + QStringLiteral("a table outside a statement");
            return;
        }
        QList<QStringList> &table = m_page.statements.back().table;
        if (!m_inTable && !table.isEmpty())
            m_page.problems << m_place + QStringLiteral("a second table in one statement");
        else if (!isSeparator(line))
            table << cellsOf(line);
    }

    BehaviorPage m_page;
    QString m_section;
    QString m_place;
    bool m_inTable = false;
    bool m_inParagraph = false;
};

}

QStringList BehaviorPage::headings() const
{
    QStringList result;
    for (const BehaviorStatement &statement : statements)
        result << statement.heading;
    return result;
}

QList<QStringList> BehaviorPage::table(const QString &heading) const
{
    const auto found = std::find_if(statements.begin(), statements.end(),
                                    [&](const BehaviorStatement &statement) { return statement.heading == heading; });
    return found == statements.end() ? QList<QStringList>() : found->table;
}

BehaviorPage readBehaviorPage()
{
    QFile file(QStringLiteral(LCD_SOURCE_DIR "/") + PageName);
    if (!file.open(QIODevice::ReadOnly)) {
        BehaviorPage page;
        page.problems << PageName + QStringLiteral(": ") + file.errorString();
        return page;
    }
    Reader reader;
    int number = 0;
    for (const QString &line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n')))
        reader.read(line, ++number);
    return reader.page();
}

QString markdownTable(const QList<QStringList> &rows)
{
    QStringList lines;
    for (const QStringList &row : rows)
        lines << QStringLiteral("| %1 |").arg(row.join(QStringLiteral(" | ")));
    if (!rows.isEmpty())
        lines.insert(1, QLatin1Char('|') + QStringLiteral("---|").repeated(rows.first().size()));
    return lines.join(QLatin1Char('\n'));
}
