#include "commondialog.h"
#include "ivrerror.h"

#include <QTest>

using namespace ivr;

class tst_CommonDialog : public QObject
{
    Q_OBJECT

private slots:
    void filters_data()
    {
        QTest::addColumn<QString>("filter");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("script-filter-named-twice")
                << "Brindlewave IVR Script (*.ivr) |*.ivr"
                << QStringList{"Brindlewave IVR Script (*.ivr)", "All Files (*)"};
        QTest::newRow("star-dot-star-misses-files-without-dot")
                << "All Files (*.*)|*.*" << QStringList{"All Files (*)"};
    }
    void filters()
    {
        QFETCH(QString, filter);
        QFETCH(QStringList, expected);
        CommonDialog dialog;
        dialog.Filter = filter;
        QCOMPARE(dialog.nameFilters(), expected);
    }

    // A cancelled Open keeps the last name, a cancelled Save clears it, and
    // CancelError makes a cancel an error.
    void cancel()
    {
        CommonDialog::setTestAnswer(
                [](const CommonDialog &, CommonDialog::Mode) { return std::optional<QString>(); });
        auto answerGone = qScopeGuard([] { CommonDialog::clearTestAnswer(); });
        CommonDialog dialog;
        dialog.FileName = "/tmp/last.ivr";
        dialog.ShowOpen();
        QCOMPARE(dialog.FileName, "/tmp/last.ivr");
        dialog.ShowSave();
        QCOMPARE(dialog.FileName, QString());
        dialog.CancelError = true;
        QVERIFY_THROWS_EXCEPTION(IvrError, dialog.ShowOpen());
    }
};

QTEST_MAIN(tst_CommonDialog)
#include "tst_commondialog.moc"
