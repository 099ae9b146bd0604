#include "platform/report/font_subset.h"

#include <hb-subset.h>

#include <memory>

namespace qk::report {

namespace {

template <auto destroy>
struct Destroy {
  template <class Thing>
  void operator()(Thing* thing) const {
    destroy(thing);
  }
};
using Blob = std::unique_ptr<hb_blob_t, Destroy<hb_blob_destroy>>;
using Face = std::unique_ptr<hb_face_t, Destroy<hb_face_destroy>>;
using Input = std::unique_ptr<hb_subset_input_t, Destroy<hb_subset_input_destroy>>;
using Plan = std::unique_ptr<hb_subset_plan_t, Destroy<hb_subset_plan_destroy>>;

/// All that a PDF file asks of a face: what shapes texts or fits letters to coarse screens stays out.
constexpr const char* kTables[] = {"glyf", "loca", "head", "hhea", "hmtx", "maxp"};

/// Holds its tables: HarfBuzz reads on in them after it has given them back.
Face faceOf(const QRawFont& font) {
  Face face(hb_face_builder_create());
  for (const char* name : kTables) {
    const QByteArray bytes = font.fontTable(name);
    const Blob blob(hb_blob_create(bytes.constData(), static_cast<unsigned>(bytes.size()),
                                   HB_MEMORY_MODE_DUPLICATE, nullptr, nullptr));
    hb_face_builder_add_table(face.get(), hb_tag_from_string(name, -1), blob.get());
  }
  return face;
}

}  // namespace

std::optional<FontSubset> cutDown(const QRawFont& face, const std::vector<quint32>& wanted) {
  if (face.fontTable("glyf").isEmpty() || !face.fontTable("fvar").isEmpty()) return std::nullopt;
  const Face source = faceOf(face);
  const Input input(hb_subset_input_create_or_fail());
  if (!input) return std::nullopt;
  hb_subset_input_set_flags(input.get(), HB_SUBSET_FLAGS_NO_HINTING | HB_SUBSET_FLAGS_NOTDEF_OUTLINE);
  for (const quint32 glyph : wanted) hb_set_add(hb_subset_input_glyph_set(input.get()), glyph);
  const Plan plan(hb_subset_plan_create_or_fail(source.get(), input.get()));
  const Face cut(plan ? hb_subset_plan_execute_or_fail(plan.get()) : nullptr);
  if (!cut) return std::nullopt;
  const Blob program(hb_face_reference_blob(cut.get()));
  unsigned size = 0;
  const char* bytes = hb_blob_get_data(program.get(), &size);
  FontSubset subset{QByteArray(bytes, static_cast<qsizetype>(size))};
  const hb_map_t* glyphs = hb_subset_plan_old_to_new_glyph_mapping(plan.get());
  for (const quint32 glyph : wanted) subset.glyphs.push_back(static_cast<quint16>(hb_map_get(glyphs, glyph)));
  return subset;
}

}  // namespace qk::report
