#pragma once

#include <QString>
#include <QVBoxLayout>
#include <QVariant>
#include <QWidget>

#include <initializer_list>
#include <memory>
#include <utility>

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
