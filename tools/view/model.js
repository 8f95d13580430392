// The asset's objects in the scene. They have the numbers of the nodes in the page's data. Of an entry, `meshes` has
// what is drawn of it, one mesh for each chunk.
class Model {
    constructor(gltf, nodes) {
        this.scene = gltf.scene;
        this.nodes = nodes;
        this.objects = numberedObjects(gltf.scene);
        this.meshes = [];
        this.markers = new Map();
        this.look = { textures: true, wireframe: false, normals: false };
        this.selection = null;
        this.outline = [];
        this.variants = new Map();
        gltf.parser.json.nodes.forEach((node, number) => {
            if (node.mesh !== undefined)
                this.addMeshes(number, gltf.parser.json.meshes[node.mesh].primitives);
        });
        this.scene.updateMatrixWorld();
        this.box = this.boxOf(this.meshes);
        this.size = this.box.getSize(new THREE.Vector3()).length() || 1;
    }

    addMeshes(number, primitives) {
        const object = this.objects[number];
        const entry = this.nodes[number].kind === 'mesh' ? this.nodes[number].parent : number;
        const meshes = object.isGroup ? object.children.slice(0, primitives.length) : [object];
        meshes.forEach((mesh, i) => {
            const drawn = mesh.isSkinnedMesh ? hungOnBone(mesh) : mesh;
            drawn.userData = { entry, chunk: primitives[i].extras.chunk };
            toTriangleList(drawn);
            drawn.castShadow = drawn.receiveShadow = true;
            this.variants.set(drawn, new Map([['original', drawn.material]]));
            this.meshes.push(drawn);
        });
        if (object.isSkinnedMesh || (object.isGroup && this.nodes[number].kind === 'mesh'))
            object.parent.remove(object);
    }

    meshesOf(number) { return this.meshes.filter((mesh) => mesh.userData.entry === number); }
    shownMeshes() { return this.meshes.filter((mesh) => mesh.layers.mask === 1); }

    // Leaves out meshes that are damaged so that they reach too far for all others to be seen beside them.
    boxOf(meshes) {
        const box = new THREE.Box3();
        for (const mesh of meshes) {
            mesh.geometry.boundingBox || mesh.geometry.computeBoundingBox();
            const own = mesh.geometry.boundingBox.clone().applyMatrix4(mesh.matrixWorld);
            if (isNear(own))
                box.union(own);
        }
        return box.isEmpty() ? new THREE.Box3(new THREE.Vector3(-1, -1, -1), new THREE.Vector3(1, 1, 1)) : box;
    }

    // The box of an entry, or of what hangs on another node; a small one around a point.
    boxOfNode(number) {
        const object = this.objects[number];
        const meshes = this.meshes.filter((mesh) => this.isBelow(mesh.userData.entry, number));
        if (meshes.length > 0 && !this.isPoint(number))
            return this.boxOf(meshes);
        const centre = new THREE.Vector3().setFromMatrixPosition(object.matrixWorld);
        return new THREE.Box3().setFromCenterAndSize(centre, new THREE.Vector3().setScalar(this.size / 10));
    }

    isPoint(number) { return ['attachment', 'bone'].includes(this.nodes[number].kind); }

    isBelow(number, ancestor) {
        for (let at = number; at !== undefined; at = this.nodes[at].parent)
            if (at === ancestor)
                return true;
        return false;
    }

    // Shows or hides an entry's own meshes, or the marker of a point. What hangs on it stays.
    show(number, isShown) {
        if (this.isPoint(number))
            return this.showMarker(number, isShown);
        this.meshesOf(number).forEach((mesh) => mesh.layers.set(isShown ? 0 : 1));
    }

    showMarker(number, isShown) {
        if (isShown && !this.markers.has(number))
            this.markers.set(number, this.makeMarker(number));
        if (this.markers.has(number))
            this.markers.get(number).visible = isShown;
    }

    makeMarker(number) {
        const object = this.objects[number];
        const isBone = this.nodes[number].kind === 'bone';
        const marker = isBone ? boneMarker(this.size * 0.008) : new THREE.AxesHelper(this.size * 0.035);
        showThrough(marker);
        const parent = this.nodes[this.nodes[number].parent];
        if (isBone && parent && parent.kind === 'bone')
            marker.add(showThrough(boneLine()));
        object.add(marker);
        return marker;
    }

    // Lines from bones to their parents, which move.
    updateMarkers() {
        for (const [number, marker] of this.markers)
            marker.children.forEach((line) => reachToParent(line, this.objects[number]));
    }

    setLook(look) {
        Object.assign(this.look, look);
        this.meshes.forEach((mesh) => { mesh.material = this.materialOf(mesh); });
    }

    materialOf(mesh) {
        const variants = this.variants.get(mesh);
        const original = variants.get('original');
        const { textures, wireframe, normals } = this.look;
        if (!mesh.isMesh || (textures && !wireframe && !normals))
            return original;
        const key = `${textures} ${wireframe} ${normals}`;
        if (!variants.has(key))
            variants.set(key, variantOf(original, this.look));
        return variants.get(key);
    }

    // Outlines a node, or one chunk of an entry. `number` is null for nothing.
    select(number, chunk = null) {
        this.outline.forEach((line) => line.parent.remove(line));
        this.selection = number;
        const meshes = number === null ? [] : this.meshesOf(number).filter((mesh) => chunk === null || mesh.userData.chunk === chunk);
        this.outline = meshes.map((mesh) => {
            const line = outlineOf(mesh);
            mesh.add(line);
            return line;
        });
        this.updateOutline();
    }

    updateOutline() {
        this.outline.forEach((line) => {
            for (const part of [line, ...line.children])
                part.material.color.set(themeColour('--accent'));
            line.visible = line.parent.layers.mask === 1;
        });
    }

    counts() {
        const shown = this.shownMeshes();
        const triangles = shown.filter((mesh) => mesh.isMesh).reduce((sum, mesh) => sum + elementCount(mesh) / 3, 0);
        return { objects: shown.length, triangles };
    }
}

// Nodes are named n and their number, so that animations find them whatever their names are.
function numberedObjects(scene) {
    const objects = [];
    scene.traverse((object) => {
        const match = /^n(\d+)$/.exec(object.name);
        if (match)
            objects[Number(match[1])] = object;
    });
    return objects;
}

// A chunk follows one bone with all its vertices. As a child of that bone it needs no skin, and can be clicked in any
// pose.
function hungOnBone(skinned) {
    const joint = skinned.geometry.attributes.skinIndex.getX(0);
    const material = skinned.material.clone();
    material.skinning = false;
    const mesh = new THREE.Mesh(skinned.geometry, material);
    mesh.matrixAutoUpdate = false;
    mesh.matrix.copy(skinned.skeleton.boneInverses[joint]);
    skinned.skeleton.bones[joint].add(mesh);
    return mesh;
}

function isNear({ min, max }) {
    const kFar = 1e6;
    return [...min.toArray(), ...max.toArray()].every((coordinate) => Math.abs(coordinate) < kFar);
}

function elementCount({ geometry }) {
    return (geometry.index || geometry.attributes.position).count;
}

// Strips and fans can't be clicked.
function toTriangleList(mesh) {
    if (!mesh.isMesh || mesh.drawMode === THREE.TrianglesDrawMode)
        return;
    const { index } = mesh.geometry;
    const isFan = mesh.drawMode === THREE.TriangleFanDrawMode;
    const list = [];
    for (let i = 0; i + 2 < index.count; ++i) {
        const isOdd = !isFan && i % 2 === 1;
        const corners = [isFan ? 0 : i, isOdd ? i + 2 : i + 1, isOdd ? i + 1 : i + 2];
        list.push(...corners.map((corner) => index.getX(corner)));
    }
    mesh.geometry = mesh.geometry.clone();
    mesh.geometry.setIndex(list);
    mesh.drawMode = THREE.TrianglesDrawMode;
}

function variantOf(original, { textures, wireframe, normals }) {
    const material = normals ? new THREE.MeshNormalMaterial({ side: original.side }) : original.clone();
    if (!textures && !normals)
        material.map = null;
    material.wireframe = wireframe;
    return material;
}

// EdgesGeometry can't read positions that are interleaved with other attributes.
function shapeOnly({ index, attributes: { position } }) {
    const numbers = new Float32Array(position.count * 3);
    for (let i = 0; i < position.count; ++i)
        numbers.set([position.getX(i), position.getY(i), position.getZ(i)], 3 * i);
    const geometry = new THREE.BufferGeometry();
    geometry.setAttribute('position', new THREE.BufferAttribute(numbers, 3));
    geometry.setIndex(index);
    return geometry;
}

const kMostOutlined = 60000;

function outlineOf(mesh) {
    let geometry = null;
    if (mesh.isMesh && elementCount(mesh) <= kMostOutlined) {
        geometry = new THREE.EdgesGeometry(shapeOnly(mesh.geometry), 15);
    } else {
        const box = mesh.geometry.boundingBox;
        const size = box.getSize(new THREE.Vector3());
        geometry = new THREE.EdgesGeometry(new THREE.BoxBufferGeometry(size.x, size.y, size.z));
        geometry.translate(...box.getCenter(new THREE.Vector3()).toArray());
    }
    // Faint where something is in front of it.
    const line = new THREE.LineSegments(geometry, new THREE.LineBasicMaterial());
    const faint = new THREE.LineSegments(geometry, new THREE.LineBasicMaterial({ opacity: 0.25 }));
    line.add(showThrough(faint));
    line.material.transparent = true;
    line.renderOrder = 1;
    return line;
}

function boneMarker(size) {
    const material = new THREE.MeshBasicMaterial({ color: 0x2f9bd6 });
    return new THREE.Mesh(new THREE.OctahedronBufferGeometry(size), material);
}

function boneLine() {
    const geometry = new THREE.BufferGeometry();
    geometry.setAttribute('position', new THREE.Float32BufferAttribute(6, 3));
    const line = new THREE.Line(geometry, new THREE.LineBasicMaterial({ color: 0x2f9bd6 }));
    line.frustumCulled = false;
    return line;
}

// A bone's line begins at the bone, and is in the bone's space.
function reachToParent(line, bone) {
    const { x, y, z } = bone.position.clone().negate().applyQuaternion(bone.quaternion.clone().inverse());
    const { position } = line.geometry.attributes;
    position.setXYZ(1, x, y, z);
    position.needsUpdate = true;
}

// Draws an object after all others, whatever is in front of it.
function showThrough(object) {
    object.renderOrder = 2;
    object.material.depthTest = false;
    object.material.transparent = true;
    return object;
}
