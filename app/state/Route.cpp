// SPDX-License-Identifier: MIT
#include "app/state/Route.h"

#include "core/primitives/Overloaded.h"

std::string Route::id() const {
    return std::visit(
        Overloaded{
            [](const NewEntry& route) { return "newEntry-" + route.groupID.text(); },
            [](const EditEntry& route) { return "editEntry-" + route.id.text(); },
            [](const NewGroup& route) { return "newGroup-" + route.parentID.text(); },
            [](const EditGroup& route) { return "editGroup-" + route.id.text(); },
            [](const Generator& route) { return "generator-" + (route.target ? route.target->text() : "-"); },
        },
        sheet);
}
