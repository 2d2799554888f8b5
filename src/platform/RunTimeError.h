#pragma once

#include <QString>

#include <exception>

/// A failure that the platform raises: its number and its text. What nobody handles ends the program.
class RunTimeError : public std::exception
{
public:
    enum Number
    {
        overflow = 6,
        subscript_out_of_range = 9,
        division_by_zero = 11,
        type_mismatch = 13,
        file_not_found = 53,
        file_already_exists = 58,
        permission_denied = 70,
        path_file_access_error = 75,
        path_not_found = 76,
        key_not_unique = 35602,
    };

    explicit RunTimeError(Number number);

    int number() const { return number_; }
    /// The platform's own text of the error, English in every build, such as "Overflow".
    QString text() const;
    const char* what() const noexcept override { return "run-time error"; }

private:
    Number number_;
};

/// Runs `statement` with errors ignored: a RunTimeError ends the statement and goes no further.
/// Gives whether it ran through.
template<typename Statement> bool errors_ignored(Statement&& statement)
{
    try {
        statement();
        return true;
    } catch (const RunTimeError&) {
        return false;
    }
}
