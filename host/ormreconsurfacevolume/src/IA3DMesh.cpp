#include "IA3DMesh.h"

IA3D::mesh::mesh() = default;

IA3D::mesh::~mesh() = default;
