#include "corvane/platform/gtk/gtk_transform.h"

namespace corvane::gtk {

GskTransform* makeGskTransform(const CGAffineTransform& transform) {
  if (transform.isIdentity()) return nullptr;
  const graphene_point_t offset{static_cast<float>(transform.tx), static_cast<float>(transform.ty)};
  if (transform.b == 0 && transform.c == 0) {
    // The toolkit draws what it knows to be moved or scaled more exactly and faster than what any matrix may do to it.
    GskTransform* moved = gsk_transform_translate(nullptr, &offset);
    if (transform.a == 1 && transform.d == 1) return moved;
    return gsk_transform_scale(moved, static_cast<float>(transform.a), static_cast<float>(transform.d));
  }
  graphene_matrix_t matrix;
  graphene_matrix_init_from_2d(&matrix, transform.a, transform.b, transform.c, transform.d, transform.tx, transform.ty);
  return gsk_transform_matrix(nullptr, &matrix);
}

}  // namespace corvane::gtk
