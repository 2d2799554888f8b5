#pragma once

#include "race_round.h"

#include <QDialog>
#include <QMap>
#include <QWidget>

#include <functional>

class ListView;
class TreeView;

/// A person at the main window in a race, who does one thing after another by chance.
class RaceUser
{
public:
    /// Both outlive it.
    RaceUser(QWidget& window, RaceRound& round);

    /// Does one thing; gives what.
    QString act();

private:
    struct Act
    {
        QString name;
        void (RaceUser::*perform)();
        int weight;
    };
    static const QList<Act>& acts();

    void click_folder();
    void expand_folder();
    void refresh();
    void click_row();
    void tick_row();
    void pick_all();
    void pick_none();
    void sort();
    void save();
    void convert_final_list();
    void edit_one(QDialog& final_list);
    void copy_to_folder(QDialog& final_list);
    void auto_convert();
    void copy_files();
    void delete_files();
    void rename_file();
    void work_on_subfolder();
    void add_folder();
    void play();

    int below(int limit) { return static_cast<int>(round_.below(static_cast<std::size_t>(limit))); }
    bool select_rows(int most);
    void choose(const QString& entry);
    void type_label(const QString& text);

    QWidget& window_;
    RaceRound& round_;
    ListView& list_;
    TreeView& tree_;
};
