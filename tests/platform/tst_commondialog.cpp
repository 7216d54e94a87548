#include "commondialog.h"
#include "ivrerror.h"

#include <QTest>

using namespace ivr;

class tst_CommonDialog : public QObject
{
    Q_OBJECT

private slots:
    void filters_data();
    void filters();
    void cancel();
};

void tst_CommonDialog::filters_data()
{
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("script-filter-named-once")
            << "Brindlewave IVR Script (*.ivr) |*.ivr"
            << QStringList{"Brindlewave IVR Script (*.ivr)", "All Files (*)"};
    QTest::newRow("star-dot-star-takes-files-without-dot")
            << "All Files (*.*)|*.*" << QStringList{"All Files (*)"};
}

void tst_CommonDialog::filters()
{
    QFETCH(QString, filter);
    QFETCH(QStringList, expected);
    CommonDialog dialog;
    dialog.Filter = filter;
    QCOMPARE(dialog.nameFilters(), expected);
}

void tst_CommonDialog::cancel()
{
    CommonDialog::setTestAnswer(
            [](const CommonDialog &, CommonDialog::Mode) { return std::optional<QString>(); });
    auto answerGone = qScopeGuard([] { CommonDialog::clearTestAnswer(); });
    CommonDialog dialog;
    dialog.FileName = "/tmp/last.ivr";
    dialog.ShowOpen();
    QCOMPARE(dialog.FileName, QString("/tmp/last.ivr"));
    dialog.ShowSave();
    QCOMPARE(dialog.FileName, QString());
    dialog.CancelError = true;
    QVERIFY_THROWS_EXCEPTION(IvrError, dialog.ShowOpen());
}

QTEST_MAIN(tst_CommonDialog)
#include "tst_commondialog.moc"
