#pragma once

#include "core/mod_of_grobal_var.h"
#include "platform/language.h"
#include "test_main.h"

#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>

/// All windows of the program in one language, filled as a person sees them: files of every kind are listed and chosen.
class AllForms
{
public:
    using Visit = std::function<void(QWidget& form)>;

    explicit AllForms(Language language);
    ~AllForms();
    AllForms(const AllForms&) = delete;
    AllForms& operator=(const AllForms&) = delete;

    static QStringList names();
    /// Shows the form of one of these names, calls `visit` and closes it.
    void show(const QString& name, const Visit& visit) const;

private:
    void fill_final_list() const;

    TestDisk disk_;
};
