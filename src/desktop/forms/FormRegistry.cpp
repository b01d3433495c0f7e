#include "desktop/forms/FormRegistry.h"

Form* FormRegistry::find(const QString& name) const
{
    for (auto* form : forms_) {
        if (form->objectName() == name)
            return form;
    }
    return nullptr;
}

void FormRegistry::unloadAllExcept(const QStringList& except, CloseMode mode)
{
    const auto forms = forms_;
    for (auto* form : forms) {
        if (isLoaded(form) && !except.contains(form->objectName()))
            form->requestUnload(mode);
    }
}

void FormRegistry::deleteAllExcept(const Form* kept)
{
    const auto forms = forms_ + unloaded_;
    for (auto* form : forms) {
        if (form != kept && (isLoaded(form) || unloaded_.contains(form)))
            delete form;
    }
}
