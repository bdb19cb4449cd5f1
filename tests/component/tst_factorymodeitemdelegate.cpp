#include "factorymodeitemdelegate.h"

#include <QtGui/QPainter>
#include <QtGui/QStandardItemModel>
#include <QtTest/QtTest>

using LCD::FactoryModeImpl::FactoryModeItemDelegate;

namespace {

const QRect Row(7, 9, 200, 40);

/// One row, painted on a black image.
class Painted
{
public:
    explicit Painted(const QString &title, QStyle::State state = QStyle::State_Enabled, const QVariant &foreground = {})
    {
        QStandardItemModel model;
        auto *item = new QStandardItem(title);
        item->setData(foreground, Qt::ForegroundRole);
        model.appendRow(item);
        option.rect = Row;
        option.state = state;
        option.palette.setBrush(QPalette::Highlight, QColor(0, 0, 255));
        option.font.setPixelSize(16);
        paint(model.index(0, 0));
    }
    /// A row without text.
    explicit Painted(const QStyleOptionViewItem &opt) : option(opt)
    {
        QStandardItemModel model(1, 1);
        paint(model.index(0, 0));
    }

    /// Returns the bounding rectangle of everything that was painted between the columns @p left and @p right.
    QRect ink(int left, int right) const
    {
        QRect bounds;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = left; x <= right; ++x) {
                if (image.pixelColor(x, y) != QColor(Qt::black))
                    bounds |= QRect(x, y, 1, 1);
            }
        }
        return bounds;
    }
    int arrowLeft() const { return Row.right() - 20 - QFontMetrics(option.font).horizontalAdvance(QLatin1Char('>')); }

    QStyleOptionViewItem option;
    QImage image{220, 60, QImage::Format_RGB32};
    QPen penAfter;

private:
    void paint(const QModelIndex &index)
    {
        image.fill(Qt::black);
        QPainter painter(&image);
        FactoryModeItemDelegate().paint(&painter, option, index);
        penAfter = painter.pen();
    }
};

}

class tst_FactoryModeItemDelegate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void heightGrowsByTen()
    {
        QStandardItemModel model(1, 1);
        model.setData(model.index(0, 0), QStringLiteral("Title"));
        const QStyleOptionViewItem option;
        QCOMPARE(FactoryModeItemDelegate().sizeHint(option, model.index(0, 0)),
                 QStyledItemDelegate().sizeHint(option, model.index(0, 0)) + QSize(0, 10));
    }
    void titleAndArrowKeepTheirMargins()
    {
        const Painted row(QStringLiteral("HHH"));
        const QRect title = row.ink(0, row.arrowLeft() - 1);
        QVERIFY(title.left() >= Row.left() + 20 && title.left() <= Row.left() + 24);
        const QRect arrow = row.ink(row.arrowLeft(), 219);
        QVERIFY(!arrow.isEmpty());
        QVERIFY(arrow.right() <= Row.right() - 20);
        QVERIFY(qAbs(title.center().y() - Row.center().y()) <= 3);
        QVERIFY(title.top() >= Row.top() + 5 && title.bottom() <= Row.bottom() - 5);
    }
    void longTitleIsCutOff()
    {
        const Painted row(QString(80, QLatin1Char('H')));
        const QRect gap = row.ink(row.arrowLeft() - 9, row.arrowLeft() - 1);
        QVERIFY(gap.isEmpty());
        QVERIFY(row.ink(0, row.arrowLeft() - 10).right() > row.arrowLeft() - 30);
    }
    void plainRowHasNoBackground()
    {
        for (const QStyle::State state :
             {QStyle::State(QStyle::State_None), QStyle::State_Enabled | QStyle::State_MouseOver,
              QStyle::State_Enabled | QStyle::State_HasFocus}) {
            const Painted row(QStringLiteral("HHH"), state);
            QVERIFY(row.ink(0, Row.left() + 19).isEmpty());
            QCOMPARE(row.image, Painted(QStringLiteral("HHH"), QStyle::State_None).image);
        }
    }
    void selectedRowFillsItsRectangle()
    {
        const Painted row(QString(), QStyle::State_Enabled | QStyle::State_Selected);
        QCOMPARE(row.ink(0, 219), Row);
        QCOMPARE(row.image.pixelColor(Row.topLeft()), QColor(0, 0, 255));
        QCOMPARE(row.image.pixelColor(Row.bottomRight()), QColor(0, 0, 255));
    }
    void highlightIsThatOfTheColorGroup()
    {
        QStyleOptionViewItem option;
        option.rect = Row;
        option.state = QStyle::State_Selected;
        option.palette.setBrush(QPalette::Active, QPalette::Highlight, Qt::blue);
        option.palette.setBrush(QPalette::Inactive, QPalette::Highlight, Qt::green);
        option.palette.setCurrentColorGroup(QPalette::Inactive);
        QCOMPARE(Painted(option).image.pixelColor(Row.topLeft()), QColor(Qt::green));
    }
    void rowWithoutTextStillHasItsArrow()
    {
        const Painted row{QString()};
        QVERIFY(row.ink(0, row.arrowLeft() - 1).isEmpty());
        QVERIFY(!row.ink(row.arrowLeft(), 219).isEmpty());
    }
    void colorOfTheText_data()
    {
        QTest::addColumn<QVariant>("foreground");
        QTest::addColumn<QImage>("same");
        QTest::addColumn<bool>("white");
        const QImage white = Painted(QStringLiteral("T")).image;
        QTest::newRow("none is white") << QVariant() << white << true;
        QTest::newRow("white brush") << QVariant(QBrush(QColor(255, 255, 255))) << white << true;
        QTest::newRow("red brush") << QVariant(QBrush(Qt::red))
                                   << Painted(QStringLiteral("T"), QStyle::State_Enabled, QColor(Qt::red)).image
                                   << false;
        QTest::newRow("no color") << QVariant(QSize(1, 1))
                                  << Painted(QStringLiteral("T"), QStyle::State_Enabled, QColor()).image << false;
    }
    void colorOfTheText()
    {
        QFETCH(QVariant, foreground);
        QFETCH(QImage, same);
        QFETCH(bool, white);
        const Painted row(QStringLiteral("T"), QStyle::State_Enabled, foreground);
        QCOMPARE(row.image, same);
        QCOMPARE(row.image == Painted(QStringLiteral("T")).image, white);
    }
    void painterIsLeftAsItWas() { QCOMPARE(Painted(QStringLiteral("T")).penAfter, QPen()); }
};

QTEST_MAIN(tst_FactoryModeItemDelegate)
#include "tst_factorymodeitemdelegate.moc"
