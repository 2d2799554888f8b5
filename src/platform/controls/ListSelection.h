#pragma once

#include <QItemSelectionModel>
#include <QObject>

class ListModel;

/// Keeps the rows' `Selected` and SelectedItem in line with the selection that the views show. What code sets is put
/// into the views' selection in one go, at the next event or painting; what a person selects goes into the rows at
/// once.
class ListSelection : public QObject
{
    Q_OBJECT

public:
    explicit ListSelection(ListModel& model);

    QItemSelectionModel* shown() { return &shown_; }
    /// To be told after every change of the rows or their flags that code makes.
    void set_changed();
    bool is_outdated() const { return is_outdated_; }
    /// Brings the views' selection up to date.
    void update();

Q_SIGNALS:
    /// The views show an old selection now and are to paint anew.
    void Outdated();

private:
    void take_rows(const QItemSelection& rows, bool selected);

    ListModel& model_;
    QItemSelectionModel shown_;
    bool is_outdated_ = false;
    bool is_updating_ = false;
};
