#pragma once

// The main function of a QtTest executable that drives widgets.
//
// The offscreen platform that the tests run on never frees the screen it sets up while the
// application object is built, and LeakSanitizer would report that at every exit. Only the
// allocations made while the application object is built are left out of the leak check;
// everything the tests themselves allocate is still checked.
#include <QApplication>
#include <QtTest>

#include <memory>

#if defined(__SANITIZE_ADDRESS__)
#define SPARKWRIGHT_LEAK_CHECKED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define SPARKWRIGHT_LEAK_CHECKED 1
#endif
#endif
#ifdef SPARKWRIGHT_LEAK_CHECKED
#include <sanitizer/lsan_interface.h>
#endif

inline std::unique_ptr<QApplication> createTestApplication(int &argc, char **argv)
{
#ifdef SPARKWRIGHT_LEAK_CHECKED
    const __lsan::ScopedDisabler platformSetUp;
#endif
    auto application = std::make_unique<QApplication>(argc, argv);
    application->setAttribute(Qt::AA_Use96Dpi, true);
    return application;
}

#define SPARKWRIGHT_WIDGET_TEST_MAIN(TestObject)                                                             \
    int main(int argc, char *argv[])                                                                         \
    {                                                                                                        \
        const std::unique_ptr<QApplication> application = createTestApplication(argc, argv);                 \
        TestObject test;                                                                                     \
        QTEST_SET_MAIN_SOURCE_PATH                                                                           \
        return QTest::qExec(&test, argc, argv);                                                              \
    }
