#include "ivrerror.h"
#include "mainsettings.h"
#include "shelltesting.h"

#include <QtTest>

using ivr::MainSettings;

class tst_MainSettings : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<ProgramFolder>();
        shelltesting::useStoreOf(*m_folder);
    }
    void cleanup() { m_folder.reset(); }

    void storedTextIsRead_data();
    void storedTextIsRead();
    void garbageIsRefused_data();
    void garbageIsRefused();
    void roundTripKeepsFractions();

private:
    std::unique_ptr<ProgramFolder> m_folder;
};

void tst_MainSettings::storedTextIsRead_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("text");
    QTest::addColumn<float>("width");
    QTest::addColumn<bool>("toolBar");
    auto row = [](const char *name, auto... v) {
        (QTest::newRow(name) << ... << v);
    };
    row("decimal-with-fraction", "MainWidth", "7012.5", 7012.5f, true);
    row("negative-position-kept-unclamped", "MainWidth", "-300", -300.0f, true);
    row("lower-case-false-still-false", "ShowToolBar", "false", 6500.0f, false);
    row("number-zero-is-false", "ShowToolBar", "0", 6500.0f, false);
    row("number-minus-one-is-true", "ShowToolBar", "-1", 6500.0f, true);
}

void tst_MainSettings::storedTextIsRead()
{
    QFETCH(QString, key);
    QFETCH(QString, text);
    QFETCH(float, width);
    QFETCH(bool, toolBar);
    shelltesting::putStored(key, text);
    MainSettings settings;
    settings.read();
    QCOMPARE(settings.MainWidth, width);
    QCOMPARE(settings.ShowToolBar, toolBar);
}

void tst_MainSettings::garbageIsRefused_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("text");
    QTest::newRow("word-in-a-number") << "MainLeft"
                                      << "left";
    QTest::newRow("empty-number") << "MainHeight"
                                  << "";
    QTest::newRow("word-in-a-boolean") << "ShowStatusBar"
                                       << "Yes please";
}

void tst_MainSettings::garbageIsRefused()
{
    QFETCH(QString, key);
    QFETCH(QString, text);
    shelltesting::putStored(key, text);
    MainSettings settings;
    try {
        settings.read();
        QFAIL("garbage was taken for a value");
    } catch (const ivr::IvrError &error) {
        QVERIFY2(error.description().contains(key), qPrintable(error.description()));
        QVERIFY2(error.description().contains(QLatin1Char('"') + text + QLatin1Char('"')),
                 qPrintable(error.description()));
    }
}

void tst_MainSettings::roundTripKeepsFractions()
{
    MainSettings written;
    written.MainLeft = 1234.567f;
    written.MainTop = -15;
    written.ShowToolBox = false;
    written.write(false);
    QCOMPARE(shelltesting::stored("ShowToolBox"), QStringLiteral("False"));
    QCOMPARE(shelltesting::stored("MainTop"), QStringLiteral("-15"));
    MainSettings read;
    read.read();
    QCOMPARE(read.MainLeft, 1234.567f);
    QCOMPARE(read.MainTop, -15.0f);
    QCOMPARE(read.ShowToolBox, false);
}

QTEST_GUILESS_MAIN(tst_MainSettings)
#include "tst_mainsettings.moc"
