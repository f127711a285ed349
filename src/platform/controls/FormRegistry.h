#pragma once

#include "Form.h"

#include <functional>
#include <map>
#include <memory>

// Forms by their names, created at first use. Filled by the program's start, which alone knows
// every form; so a form can open another one that it must not depend on.
class FormRegistry
{
public:
    static FormRegistry& instance();

    void add(const QString& name, std::function<std::unique_ptr<Form>()> make);
    bool knows(const QString& name) const;
    // Error 5 for a name that nobody added.
    Form& get(const QString& name);
    // Nothing where the form was never created or is not loaded.
    void unload(const QString& name);
    std::vector<Form*> loadedForms() const;
    // Destroys all forms and forgets their makers: when the program ends, and between tests.
    void clear();

private:
    std::map<QString, std::function<std::unique_ptr<Form>()>> makers_;
    std::map<QString, std::unique_ptr<Form>> forms_;
};

// A form by its class, for code that may depend on it: form<Form1Cli>().Text2.setText(...).
template <class T> T& form()
{
    return static_cast<T&>(FormRegistry::instance().get(QString::fromLatin1(T::Name)));
}

// Makes a form known under its own name: addForm<Form1Cli>().
template <class T> void addForm()
{
    FormRegistry::instance().add(QString::fromLatin1(T::Name),
                                 [] { return std::make_unique<T>(); });
}
