# The ZEK model file, versions 7 and later, for Kaitai Struct (https://kaitai.io). Format.md says in
# words what this file says in declarations; Reading.md shows how a reader is made of it.
#
# Three habits of ZEKTexComp's own reader are left out, since they are no properties of the files. It
# demands more bytes before some records than these have; a whole model has those bytes anyway. It
# demands as many bytes as a count below zero makes in 32 bits, and so refuses some of these counts. And
# it lets the bones be absent from a model that ends before them, which lacks the lightmaps then.
meta:
  id: zek
  title: ZEK model
  file-extension: zek
  endian: le
doc: |
  A 3D model, or from version 26 on the textures, reflection probes and lightmaps of one. Nothing is
  aligned, and no section has a tag or a length. What follows the last section belongs to nobody.

  A count of zero or less means that no records follow.
seq:
  - id: magic
    contents: [ZEK, 0]
  - id: version
    type: s4
    valid:
      min: 7
  - id: processed_marker
    doc: ZEKTexComp sets the first byte to 1.
    type: s4
    if: version >= 21
  - id: zero
    type: s4
    valid: 0
    if: version >= 26
  - id: body
    type:
      switch-on: version >= 26
      cases:
        true: textures_only
        false: whole_model
types:
  whole_model:
    doc: What follows the header before version 26.
    seq:
      - id: node_count
        type: s4
      - id: nodes
        type: node
        repeat: expr
        repeat-expr: 'node_count > 0 ? node_count : 0'
      - id: mesh_count
        type: s4
      - id: meshes
        type: mesh
        repeat: expr
        repeat-expr: 'mesh_count > 0 ? mesh_count : 0'
      - id: material_count
        type: s4
      - id: probe_count
        doc: In version 11 no records follow it.
        type: s4
        if: _root.version >= 11
      - id: probes
        type: probe
        repeat: expr
        repeat-expr: 'probe_count > 0 ? probe_count : 0'
        if: _root.version >= 12
      - id: materials
        type: material
        repeat: expr
        repeat-expr: 'material_count > 0 ? material_count : 0'
      - id: texture_count
        type: s4
      - id: textures
        type: texture
        repeat: expr
        repeat-expr: 'texture_count > 0 ? texture_count : 0'
      - id: bone_count
        type: s4
      - id: bones
        type: bone
        repeat: expr
        repeat-expr: 'bone_count > 0 ? bone_count : 0'
      - id: lightmap_count
        doc: No records follow it.
        type: s4
      - id: lightmap_switch
        doc: 1 to use lightmaps.
        type: s4
        if: _root.version >= 18
      - id: trailing_int
        type: s4
        if: _root.version >= 22
  textures_only:
    doc: What follows the header from version 26 on.
    seq:
      - id: texture_count
        type: s4
      - id: textures
        type: texture
        repeat: expr
        repeat-expr: 'texture_count > 0 ? texture_count : 0'
      - id: probe_count
        type: s4
      - id: probes
        type: probe
        repeat: expr
        repeat-expr: 'probe_count > 0 ? probe_count : 0'
      - id: lightmap_count
        type: s4
      - id: lightmaps
        type: lightmap
        repeat: expr
        repeat-expr: 'lightmap_count > 0 ? lightmap_count : 0'
      - id: lightmap_switch
        doc: 1 to use lightmaps.
        type: s4
      - id: trailing_int
        type: s4

  node:
    seq:
      - id: name
        type: text
      - id: local_pos
        doc: Relative to the parent.
        type: vector3
      - id: local_rotate
        type: quaternion
      - id: local_scale
        type: vector3
      - id: parent_node_index
        doc: -1 for a root.
        type: s4
      - id: mesh_index
        doc: -1 for none.
        type: s4
      - id: collider_shape
        type: s4
        enum: collider_shape
        valid:
          any-of:
            - collider_shape::none
            - collider_shape::box
            - collider_shape::sphere
            - collider_shape::mesh
      - id: collider
        type: collider(collider_shape)
        if: collider_shape != collider_shape::none
      - id: has_offset
        type: s4
        valid:
          any-of: [0, 1]
        if: _root.version >= 8
      - id: offset
        type: vector3
        if: _root.version >= 8 and has_offset == 1
      - id: reference_selector
        type: s4
        valid:
          any-of: [0, 1]
        if: _root.version >= 12
      - id: selected_reference
        type: s4
        if: _root.version >= 12 and reference_selector == 1
      - id: alternate_reference
        type: s4
        if: _root.version >= 16 and reference_selector == 0
      - id: reserved_block
        size: 20
        if: _root.version >= 15
      - id: reserved_word
        size: 4
        if: _root.version >= 17
  collider:
    params:
      - id: shape
        type: s4
        enum: collider_shape
    seq:
      - id: kind
        type: s4
      - id: second_int
        type: s4
        if: _root.version >= 23
      - id: center
        type: vector3
      - id: radius
        type: f4
        if: shape == collider_shape::sphere
      - id: size
        type: vector3
        if: shape != collider_shape::sphere
      - id: has_mesh
        doc: 1 when a mesh follows; any other value means no.
        type: s4
        if: _root.version >= 20 and shape == collider_shape::mesh
      - id: mesh
        type: simple_mesh
        if: _root.version >= 20 and shape == collider_shape::mesh and has_mesh == 1

  mesh_header:
    doc: The number of vertices, and what each of them has.
    seq:
      - id: vertex_count
        type: s4
      - id: has_normal
        doc: As the others, any value but 0 means yes.
        type: u1
      - id: has_tangent
        type: u1
      - id: has_uv
        type: u1
      - id: has_uv2
        type: u1
      - id: has_color
        type: u1
      - id: has_bone_weight
        type: u1
  mesh:
    seq:
      - id: header
        type: mesh_header
      - id: vertices
        type: vertex(header)
        repeat: expr
        repeat-expr: 'header.vertex_count > 0 ? header.vertex_count : 0'
      - id: bounding_box
        type: bounding_box
      - id: primitive_count
        type: s4
      - id: primitives
        type: primitive(header.vertex_count)
        repeat: expr
        repeat-expr: 'primitive_count > 0 ? primitive_count : 0'
      - id: morph_count
        type: s4
      - id: morphs
        type: morph(header.vertex_count)
        repeat: expr
        repeat-expr: 'morph_count > 0 ? morph_count : 0'
  vertex:
    params:
      - id: header
        type: mesh_header
    seq:
      - id: position
        type: vector3
      - id: normal
        type: vector3
        if: header.has_normal != 0
      - id: tangent
        type: vector3
        if: header.has_tangent != 0
      - id: uv
        type: uv
        if: header.has_uv != 0
      - id: uv2
        type: uv
        if: header.has_uv2 != 0
      - id: color
        type: color32
        if: header.has_color != 0
      - id: bone_indices
        type: s2
        repeat: expr
        repeat-expr: 4
        if: header.has_bone_weight != 0
      - id: bone_weights
        type: f4
        repeat: expr
        repeat-expr: 4
        if: header.has_bone_weight != 0
  bounding_box:
    seq:
      - id: min_pos
        type: vector3
      - id: max_pos
        type: vector3
  primitive:
    params:
      - id: vertex_count
        type: s4
    seq:
      - id: material_index
        type: s4
      - id: index_list
        type: index_list(vertex_count)
  index_list:
    doc: Indices of vertices, in four bytes each where two are not enough for all vertices.
    params:
      - id: vertex_count
        type: s4
    seq:
      - id: index_count
        type: s4
      - id: indices
        type: u2
        repeat: expr
        repeat-expr: 'index_count > 0 ? index_count : 0'
        if: vertex_count <= 65536
      - id: long_indices
        type: s4
        repeat: expr
        repeat-expr: 'index_count > 0 ? index_count : 0'
        if: vertex_count > 65536
  morph:
    params:
      - id: vertex_count
        type: s4
    seq:
      - id: name
        type: text
      - id: positions
        doc: One for each vertex.
        type: vector3
        repeat: expr
        repeat-expr: 'vertex_count > 0 ? vertex_count : 0'
  simple_mesh:
    doc: The mesh of a collider. Whatever its header says, a vertex has at most a normal.
    seq:
      - id: header
        type: mesh_header
      - id: vertices
        type: simple_vertex(header.has_normal)
        repeat: expr
        repeat-expr: 'header.vertex_count > 0 ? header.vertex_count : 0'
      - id: primitive_count
        type: s4
      - id: primitives
        type: index_list(header.vertex_count)
        repeat: expr
        repeat-expr: 'primitive_count > 0 ? primitive_count : 0'
  simple_vertex:
    params:
      - id: has_normal
        type: u1
    seq:
      - id: position
        type: vector3
      - id: normal
        type: vector3
        if: has_normal != 0

  material:
    seq:
      - id: name
        type: text
      - id: shader_type
        type: s4
      - id: blend_mode
        type: s4
      - id: cutoff
        type: f4
      - id: first_flag
        type: u1
      - id: second_flag
        type: u1
        if: _root.version >= 13
      - id: third_flag
        type: u1
      - id: color
        type: color
      - id: emission_color
        type: color
      - id: main_texture_index
        doc: -1 for none.
        type: s4
      - id: normal_texture_index
        type: s4
      - id: emission_texture_index
        type: s4
      - id: roughness_texture_index
        type: s4
        if: shader_type == 7 or (shader_type == 0 and _root.version >= 14)
      - id: shader1_index
        type: s4
        if: shader_type == 1 and _root.version >= 24
      - id: main_texture
        type: texture_transform
      - id: second_texture
        type: texture_transform
      - id: has_uv_list
        doc: Any value but 0 means yes.
        type: s4
        if: _root.version >= 10
      - id: uv_list
        type: uv_list
        if: _root.version >= 10 and has_uv_list != 0
      - id: legacy_int
        type: s4
        if: _root.version >= 11 and _root.version < 24
      - id: parameters
        doc: The other shader types have none.
        type:
          switch-on: shader_type
          cases:
            0: shader0_parameters
            1: shader1_parameters
            2: shader2_parameters
            3: shader3_parameters
            6: shader6_parameters
            7: shader0_parameters
        if: shader_type != 1 or _root.version >= 24
  texture_transform:
    doc: |
      From version 19 on, and before that where scale.v is below 1, offset.v counts from the other
      edge: the offset is then 1 - offset.v - scale.v.
    seq:
      - id: scale
        type: uv
      - id: offset
        type: uv
  uv_list:
    seq:
      - id: floats
        type: f4
        repeat: expr
        repeat-expr: 2
      - id: uv_count
        type: s4
      - id: uvs
        type: uv
        repeat: expr
        repeat-expr: 'uv_count > 0 ? uv_count : 0'
  shader0_parameters:
    doc: Those of shader types 0 and 7.
    seq:
      - id: floats
        type: f4
        repeat: expr
        repeat-expr: 2
  shader1_parameters:
    seq:
      - id: first_floats
        type: f4
        repeat: expr
        repeat-expr: 2
      - id: first_color
        type: color
      - id: second_floats
        type: f4
        repeat: expr
        repeat-expr: 3
      - id: int_value
        type: s4
      - id: second_color
        type: color
      - id: last_float
        type: f4
      - id: has_sub_block
        doc: 1 when a block follows; any other value means no.
        type: s4
        if: _root.version >= 25
      - id: sub_block
        type: shader1_sub_block
        if: _root.version >= 25 and has_sub_block == 1
  shader1_sub_block:
    seq:
      - id: floats
        type: f4
        repeat: expr
        repeat-expr: 2
      - id: int_value
        type: s4
      - id: uv
        type: uv
  shader2_parameters:
    seq:
      - id: first_color
        type: color
      - id: first_floats
        type: f4
        repeat: expr
        repeat-expr: 2
      - id: second_color
        type: color
        if: _root.version >= 9
      - id: second_floats
        type: f4
        repeat: expr
        repeat-expr: 3
        if: _root.version >= 9
      - id: third_color
        type: color
        if: _root.version >= 9
  shader3_parameters:
    seq:
      - id: first_color
        type: color
      - id: second_color
        type: color
      - id: floats
        type: f4
        repeat: expr
        repeat-expr: 5
  shader6_parameters:
    seq:
      - id: float_value
        type: f4
      - id: int_value
        type: s4

  texture:
    seq:
      - id: name
        doc: The name of its file.
        type: text
      - id: clamp
        doc: 1 to clamp.
        type: s4
      - id: flags
        type: flags
  probe:
    doc: A reflection probe. Before version 26 its index in decimal is its name.
    seq:
      - id: value
        type: s4
      - id: first_vector
        type: vector3
      - id: second_vector
        type: vector3
      - id: second_value
        type: s4
        if: _root.version >= 16
      - id: flags
        type: flags
        if: _root.version >= 16
      - id: name
        type: text
        if: _root.version >= 26
  bone:
    seq:
      - id: name
        type: text
      - id: value
        type: s4
  lightmap:
    seq:
      - id: name
        doc: The name of its file.
        type: text
      - id: flags
        type: flags

  flags:
    doc: Which compressed variants exist, 1 for yes.
    seq:
      - id: pvrtc
        type: u1
      - id: etc
        type: u1
      - id: astc
        type: u1
      - id: dxt
        type: u1
  text:
    doc: Bytes up to a zero byte. They are Shift_JIS by custom, but nothing makes them so.
    seq:
      - id: bytes
        terminator: 0
    instances:
      shift_jis:
        value: bytes.to_s('Shift_JIS')
  vector3:
    seq:
      - id: x
        type: f4
      - id: y
        type: f4
      - id: z
        type: f4
  quaternion:
    seq:
      - id: x
        type: f4
      - id: y
        type: f4
      - id: z
        type: f4
      - id: w
        type: f4
  uv:
    seq:
      - id: u
        type: f4
      - id: v
        type: f4
  color:
    seq:
      - id: r
        type: f4
      - id: g
        type: f4
      - id: b
        type: f4
      - id: a
        type: f4
  color32:
    seq:
      - id: r
        type: u1
      - id: g
        type: u1
      - id: b
        type: u1
      - id: a
        type: u1
enums:
  collider_shape:
    -1: none
    0: box
    1: sphere
    2: mesh
