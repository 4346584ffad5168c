#pragma once

#include <QApplication>

// The hourglass pointer, for as long as the object lives.
class PunteroReloj
{
public:
    PunteroReloj() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~PunteroReloj() { QApplication::restoreOverrideCursor(); }
    PunteroReloj(const PunteroReloj &) = delete;
    PunteroReloj &operator=(const PunteroReloj &) = delete;
};
