# Writes OUTPUT, a C++ source that holds every file of INPUT_FILES (separated by |) as a string
# constant, keyed by its name without extension. Run with `cmake -P` at build time.
string(REPLACE "|" ";" INPUT_FILES "${INPUT_FILES}")
set(entries "")
foreach(path IN LISTS INPUT_FILES)
  get_filename_component(name "${path}" NAME_WE)
  file(READ "${path}" content)
  string(APPEND entries "    {\"${name}\", R\"korvane_resource(${content})korvane_resource\"},\n")
endforeach()
file(WRITE "${OUTPUT}.tmp" "// Generated from KorvaneElements/resources; do not edit.
#include \"EmbeddedResources.hpp\"

namespace korvane::elements::internal {

const std::vector<EmbeddedResource>& embeddedResources() {
    static const std::vector<EmbeddedResource> resources{
${entries}    };
    return resources;
}

}  // namespace korvane::elements::internal
")
# Only touch the output when it changed, so that an unchanged icon set rebuilds nothing.
file(COPY_FILE "${OUTPUT}.tmp" "${OUTPUT}" ONLY_IF_DIFFERENT)
file(REMOVE "${OUTPUT}.tmp")
