#pragma once

#include <QString>

#include <stdexcept>

namespace ivr {

// A failure that ends the user's current action. Whatever does not catch it
// reaches the top of the event loop, which shows it in a message box.
class IvrError : public std::runtime_error
{
public:
    explicit IvrError(const QString &description)
        : std::runtime_error(description.toStdString())
        , m_description(description)
    {}
    QString description() const { return m_description; }

private:
    QString m_description;
};

} // namespace ivr
