#include "FormRegistry.h"

#include "RuntimeError.h"

FormRegistry& FormRegistry::instance()
{
    static FormRegistry registry;
    return registry;
}

void FormRegistry::add(const QString& name, std::function<std::unique_ptr<Form>()> make)
{
    makers_[name] = std::move(make);
}

bool FormRegistry::knows(const QString& name) const
{
    return makers_.contains(name);
}

Form& FormRegistry::get(const QString& name)
{
    auto& form = forms_[name];
    if (!form) {
        const auto maker = makers_.find(name);
        if (maker == makers_.end()) {
            forms_.erase(name);
            throw RuntimeError(RuntimeError::InvalidCall);
        }
        form = maker->second();
    }
    return *form;
}

void FormRegistry::unload(const QString& name)
{
    const auto it = forms_.find(name);
    if (it != forms_.end())
        it->second->unload();
}

std::vector<Form*> FormRegistry::loadedForms() const
{
    std::vector<Form*> loaded;
    for (const auto& [name, form] : forms_)
        if (form && form->isLoaded())
            loaded.push_back(form.get());
    return loaded;
}

void FormRegistry::clear()
{
    forms_.clear();
    makers_.clear();
}
