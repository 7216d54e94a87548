#include "mainsettings.h"

#include "ivrerror.h"
#include "msgbox.h"

#include <QDir>
#include <QFile>
#include <QSettings>

#include <charconv>
#include <cmath>

namespace ivr {

namespace {

// The line "key=text" of the store's own file, for a value the store has
// turned into something other than text.
QString rawText(const QSettings &store, const QString &key)
{
    QFile file(store.fileName());
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    bool inGroup = false;
    const QString section = QLatin1Char('[') + store.group() + QLatin1Char(']');
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.startsWith(QLatin1Char('[')))
            inGroup = line == section;
        else if (inGroup && line.section(QLatin1Char('='), 0, 0).trimmed() == key)
            return line.section(QLatin1Char('='), 1).trimmed();
    }
    return {};
}

QString stored(QSettings &store, const QString &key, const QString &fallback)
{
    const QVariant value = store.value(key, fallback);
    // The native store reads "1,5" as a list and "@Rect(...)" as a rectangle:
    // whatever it made of the text, the text itself is what the user wrote.
    if (value.typeId() == QMetaType::QString)
        return value.toString();
    return rawText(store, key);
}

float toFloat(const QString &key, const QString &text)
{
    bool ok = false;
    const double number = text.trimmed().toDouble(&ok);
    if (!ok || std::isnan(number))
        throw IvrError(QStringLiteral("The setting \"%1\" holds \"%2\", which is not a number.")
                               .arg(key, text));
    // Twips become whole pixels for the window: a value whose pixels do not
    // fit the window system's coordinates is as unusable as a word.
    const float value = float(number);
    if (!(std::fabs(value / 15.0f) < 2147483648.0f))
        throw IvrError(QStringLiteral("The setting \"%1\" holds \"%2\", which is too large for "
                                      "a window position or size.")
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

bool MainSettings::write(bool minimized) const
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
    if (store.status() == QSettings::NoError)
        return true;
    // The program is on its way out: this is the last chance to say that the
    // next start will not find the window as it was left.
    MsgBox::show(QStringLiteral("The settings could not be saved to \"%1\". The window's "
                                "position, size and bars will be as before at the next start.")
                         .arg(QDir::toNativeSeparators(store.fileName())),
                 QMessageBox::Warning);
    return false;
}

} // namespace ivr
