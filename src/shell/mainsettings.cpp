#include "mainsettings.h"

#include "ivrerror.h"

#include <QSettings>

#include <charconv>

namespace ivr {

namespace {

QString stored(QSettings &store, const QString &key, const QString &fallback)
{
    return store.value(key, fallback).toString();
}

float toFloat(const QString &key, const QString &text)
{
    bool ok = false;
    const float value = text.trimmed().toFloat(&ok);
    if (!ok)
        throw IvrError(QStringLiteral("The setting \"%1\" holds \"%2\", which is not a number.")
                               .arg(key, text));
    return value;
}

bool toBool(const QString &key, const QString &text)
{
    const QString t = text.trimmed();
    if (t.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0)
        return true;
    if (t.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0)
        return false;
    // A number stands for a Boolean too: zero is false, anything else true.
    bool ok = false;
    const double number = t.toDouble(&ok);
    if (!ok)
        throw IvrError(QStringLiteral("The setting \"%1\" holds \"%2\", which is neither True "
                                      "nor False.")
                               .arg(key, text));
    return number != 0;
}

} // namespace

QString MainSettings::floatText(float value)
{
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return QString::fromLatin1(buffer, int(result.ptr - buffer));
}

QString MainSettings::boolText(bool value)
{
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

void MainSettings::read()
{
    QSettings store(organisation(), application());
    store.beginGroup(group());
    MainLeft = toFloat("MainLeft", stored(store, "MainLeft", floatText(MainLeft)));
    MainTop = toFloat("MainTop", stored(store, "MainTop", floatText(MainTop)));
    MainWidth = toFloat("MainWidth", stored(store, "MainWidth", floatText(MainWidth)));
    MainHeight = toFloat("MainHeight", stored(store, "MainHeight", floatText(MainHeight)));
    ShowToolBar = toBool("ShowToolBar", stored(store, "ShowToolBar", boolText(ShowToolBar)));
    ShowStatusBar
            = toBool("ShowStatusBar", stored(store, "ShowStatusBar", boolText(ShowStatusBar)));
    ShowToolBox = toBool("ShowToolBox", stored(store, "ShowToolBox", boolText(ShowToolBox)));
}

void MainSettings::write(bool minimized) const
{
    QSettings store(organisation(), application());
    store.beginGroup(group());
    if (!minimized) {
        store.setValue("MainLeft", floatText(MainLeft));
        store.setValue("MainTop", floatText(MainTop));
        store.setValue("MainWidth", floatText(MainWidth));
        store.setValue("MainHeight", floatText(MainHeight));
    }
    store.setValue("ShowToolBar", boolText(ShowToolBar));
    store.setValue("ShowStatusBar", boolText(ShowStatusBar));
    store.setValue("ShowToolBox", boolText(ShowToolBox));
    store.sync();
}

} // namespace ivr
