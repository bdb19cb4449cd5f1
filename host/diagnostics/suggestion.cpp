#include "diagnostics/suggestion.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QVector>

#include <algorithm>
#include <numeric>

namespace panelhost {

namespace {

// What a person types has at most this length; longer text isn't compared.
constexpr int MaxWordLength = 64;

// The number of characters to insert, delete, replace or exchange with their neighbor that turns @p a into @p b.
int editDistance(const QString &a, const QString &b)
{
    QVector<int> beforePrevious;
    QVector<int> previous(b.size() + 1);
    std::iota(previous.begin(), previous.end(), 0);
    for (int i = 1; i <= a.size(); ++i) {
        QVector<int> row(b.size() + 1);
        row[0] = i;
        for (int j = 1; j <= b.size(); ++j) {
            const int replaced = previous.at(j - 1) + (a.at(i - 1) == b.at(j - 1) ? 0 : 1);
            row[j] = std::min({previous.at(j) + 1, row.at(j - 1) + 1, replaced});
            if (i > 1 && j > 1 && a.at(i - 1) == b.at(j - 2) && a.at(i - 2) == b.at(j - 1))
                row[j] = std::min(row.at(j), beforePrevious.at(j - 2) + 1);
        }
        beforePrevious = previous;
        previous = row;
    }
    return previous.constLast();
}

// "net1" and "net3" are names of different things, and neither is a misspelling of the other.
bool differInNumbers(QString a, QString b)
{
    static const QRegularExpression digits(QStringLiteral("[0-9]+"));
    return a.remove(digits) == b.remove(digits);
}

}

QString closestWord(const QString &word, const QStringList &candidates)
{
    if (word.size() < 2 || word.size() > MaxWordLength)
        return {};
    QString closest;
    int least = std::max(1, word.size() / 3) + 1;
    for (const QString &candidate : candidates) {
        const int distance = editDistance(word.toLower(), candidate.toLower());
        if (distance < least && distance < candidate.size() && !differInNumbers(word.toLower(), candidate.toLower())) {
            least = distance;
            closest = candidate;
        }
    }
    return closest;
}

QString suggestionFor(const QString &word, const QStringList &candidates)
{
    const QString closest = closestWord(word, candidates);
    return closest.isEmpty() ? QString() : QStringLiteral("; did you mean \"%1\"?").arg(closest);
}

}
