"""Loads a mesh and takes all its arrays. Prints the seconds that it took."""

import sys
import time

import zlmim

path = sys.argv[1]
start = time.perf_counter()
arrays = []
mesh = zlmim.load_mesh(path)
for chunk in mesh.chunks:
    geometry = chunk.geometry
    arrays += [geometry.vertices, geometry.vertex_normals, geometry.indices, geometry.face_normals]
print(time.perf_counter() - start)
