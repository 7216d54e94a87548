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
    void cancel_data();
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
    QTest::newRow("windows-pattern-stays-first")
            << "Programs|*.exe" << QStringList{"Programs (*.exe)", "All Files (*)"};
}

void tst_CommonDialog::filters()
{
    QFETCH(QString, filter);
    QFETCH(QStringList, expected);
    CommonDialog dialog;
    dialog.Filter = filter;
    QCOMPARE(dialog.nameFilters(), expected);
}

void tst_CommonDialog::cancel_data()
{
    QTest::addColumn<bool>("save");
    QTest::addColumn<QString>("expected");
    QTest::newRow("open-cancel-keeps-last-name") << false << "/tmp/last.ivr";
    QTest::newRow("save-cancel-gives-empty-name") << true << "";
}

void tst_CommonDialog::cancel()
{
    QFETCH(bool, save);
    QFETCH(QString, expected);
    CommonDialog dialog;
    dialog.FileName = "/tmp/last.ivr";
    CommonDialog::setTestAnswer([](const CommonDialog &, CommonDialog::Mode) {
        return std::optional<QString>();
    });
    save ? dialog.ShowSave() : dialog.ShowOpen();
    QCOMPARE(dialog.FileName, expected);

    dialog.CancelError = true;
    QVERIFY_THROWS_EXCEPTION(IvrError, dialog.ShowOpen());
    CommonDialog::clearTestAnswer();
}

QTEST_MAIN(tst_CommonDialog)
#include "tst_commondialog.moc"
