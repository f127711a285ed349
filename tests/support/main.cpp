#include "Application.h"
#include "EventTransactions.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QStandardPaths>

// Offscreen windows, real files, the same preparation as the program.
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM",
            qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    QStandardPaths::setTestModeEnabled(true);
    qunsetenv("XDG_STATE_HOME"); // each test has a home of its own
    QApplication application(argc, argv);
    prepareApplication(application);
    installEventTransactions();
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
