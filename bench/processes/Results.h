#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

/// What a run has measured.
class Results
{
public:
    void add(const QString& name, const QString& value) { values_[name].append(value); }

    /// The least of a name's values; nothing where it was not measured.
    std::optional<double> best(const QString& name) const;
    /// The last of a name's values, empty for none.
    QString text(const QString& name) const { return values_.value(name).value(values_.value(name).size() - 1); }
    /// The names that stand next behind `start` in all names that go on with "/", without those that follow on them;
    /// numbers in their order.
    QStringList parts_behind(const QString& start) const;

private:
    QHash<QString, QStringList> values_;
};
