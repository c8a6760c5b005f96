#include "oxSuperAPI/reference/editor_form.h"

#include <utility>

namespace oxSuperAPI {

TEditorForm::TEditorForm(TEditorKind Kind, TEditorOptions Options) : FKind(Kind), FOptions(std::move(Options)) {}

std::string TEditorForm::Explanation() const {
  return IsRequest() ? "OK: the text as it stands here is sent. Cancel: " + FOptions.RequestCancelled + "."
                     : "OK: what stands here counts as the answer. Cancel: the answer counts as it came.";
}

bool IsStatusText(std::string_view Text) {
  return !Text.empty() && Text.size() <= 3 && Text.find_first_not_of("0123456789") == std::string_view::npos;
}

}  // namespace oxSuperAPI
