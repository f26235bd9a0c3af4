#pragma once
// ReactorFormulasAPI: the vault's reactor formulas, the templates that reactors are built
// from; one row per operation (see OperationTable.hpp and Operation.hpp for the two call forms).
//
//     auto builder = ReactorFormulasAPI::callGet.withRequestBuilder("tokenize", 1, 20);
//     ReactorFormulasAPI::getById(formulaId, [](std::optional<ReactorFormula> formula,
//                                              std::optional<ErrorResponse> error) {});
//
// `delete_` is the operation named "delete".
//
// Thread safety: rows are constants; both forms may be called from any thread.

#include <string>

#include "Korvane/CreateReactorFormulaRequest.hpp"
#include "Korvane/OperationTable.hpp"
#include "Korvane/ReactorFormula.hpp"
#include "Korvane/ReactorFormulaPaginatedList.hpp"
#include "Korvane/UpdateReactorFormulaRequest.hpp"
#include "platform/Uuid.hpp"

namespace korvane {

// clang-format off
#define KORVANE_REACTOR_FORMULAS_API(row) \
    row(callGet, operation<ReactorFormulaPaginatedList>(HTTPMethod::get, "/reactor-formulas", \
        query<std::string>("name"), query<int>("page"), query<int>("size"))) \
    row(create, operation<ReactorFormula>(HTTPMethod::post, "/reactor-formulas", \
        body<CreateReactorFormulaRequest>())) \
    row(delete_, operation<Void>(HTTPMethod::delete_, "/reactor-formulas/{id}", \
        path<Uuid>("id"))) \
    row(getById, operation<ReactorFormula>(HTTPMethod::get, "/reactor-formulas/{id}", \
        path<Uuid>("id"))) \
    row(update, operation<ReactorFormula>(HTTPMethod::put, "/reactor-formulas/{id}", \
        path<Uuid>("id"), body<UpdateReactorFormulaRequest>()))
// clang-format on

class ReactorFormulasAPI {
    using Uuid = platform::Uuid;

public:
    KORVANE_OPERATIONS(KORVANE_REACTOR_FORMULAS_API)
};

#undef KORVANE_REACTOR_FORMULAS_API

}  // namespace korvane
