#pragma once

#include <QByteArray>

/// As long as the object lives, the rights of files hold for this thread, even when an administrator runs the test.
class BoundByRights
{
public:
    BoundByRights();
    ~BoundByRights();
    BoundByRights(const BoundByRights&) = delete;
    BoundByRights& operator=(const BoundByRights&) = delete;
};

/// A folder or file that cannot be read as long as the object lives, not even when an administrator runs the test.
class WithoutRights
{
public:
    explicit WithoutRights(QByteArray native);
    ~WithoutRights();
    WithoutRights(const WithoutRights&) = delete;
    WithoutRights& operator=(const WithoutRights&) = delete;

private:
    QByteArray native_;
    BoundByRights bound_;
};
