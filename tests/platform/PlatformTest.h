#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QVBoxLayout>
#include <QVariant>
#include <QWheelEvent>
#include <QWidget>

#include <memory>

// The widget as its design would have it.
template <class Widget> Widget* with(const char* property, const QVariant& value, Widget* widget)
{
    widget->setProperty(property, value);
    return widget;
}

// These widgets, by name, one below the other.
inline void stack(QWidget& parent, std::initializer_list<std::pair<QString, QWidget*>> widgets)
{
    auto* column = new QVBoxLayout(&parent);
    for (const auto& [name, widget] : widgets) {
        widget->setObjectName(name);
        column->addWidget(widget);
    }
}

inline std::unique_ptr<QWidget>
windowOf(std::initializer_list<std::pair<QString, QWidget*>> widgets)
{
    auto window = std::make_unique<QWidget>();
    stack(*window, widgets);
    return window;
}

// One notch down.
inline void wheel(QWidget& over)
{
    QWheelEvent event(QPointF(4, 4), over.mapToGlobal(QPointF(4, 4)), QPoint(), {0, -120},
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&over, &event);
}

// A user without any file yet.
class NewUserTest : public testing::Test
{
protected:
    NewUserTest() { qputenv("HOME", QFile::encodeName(directory_.path())); }
    ~NewUserTest() override { qputenv("HOME", home_); }

    QTemporaryDir directory_;
    const QByteArray home_ = qgetenv("HOME");
};
