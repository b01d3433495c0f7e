#pragma once

#include "desktop/forms/Form.h"

#include <QList>
#include <QString>

// The loaded forms, in the order of their loading, and the single instances among them, made at first use.
class FormRegistry
{
public:
    // The names and tags of the loaded forms can be read through the list.
    QList<Form*> loaded() const { return forms_; }
    Form* find(const QString& name) const;
    bool isLoaded(const Form* form) const { return forms_.contains(const_cast<Form*>(form)); }

    // The loaded form of this type that carries this Tag, or null.
    template <typename T>
    T* tagged(const QString& tag) const
    {
        for (auto* form : forms_) {
            auto* found = qobject_cast<T*>(form);
            if (found && found->Tag == tag)
                return found;
        }
        return nullptr;
    }

    // The single instance of a form, made by `make` when it isn't loaded.
    template <typename T, typename Make>
    T& single(const QString& name, Make&& make)
    {
        if (auto* form = qobject_cast<T*>(find(name)))
            return *form;
        return *make();
    }

    // Asks every loaded form to unload, save those named in `except`. Forms may refuse.
    void unloadAllExcept(const QStringList& except, CloseMode mode = CloseMode::Code);

    // Deletes every form that is left, save `kept`, without asking: loaded ones and unloaded ones that still
    // wait for their end.
    void deleteAllExcept(const Form* kept);

    void add(Form* form) { forms_.append(form); }
    // The form is unloaded: it isn't found any more.
    void leave(Form* form)
    {
        if (forms_.removeOne(form))
            unloaded_.append(form);
    }
    void remove(Form* form)
    {
        forms_.removeOne(form);
        unloaded_.removeOne(form);
    }

private:
    QList<Form*> forms_;
    QList<Form*> unloaded_;
};
