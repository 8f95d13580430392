'use strict';

// The canvas: camera, light, ground, and drawing whenever something has changed.
class Stage {
    constructor(canvas) {
        this.canvas = canvas;
        this.beforeDraw = [];
        this.onDraw = [];
        this.onFrame = [];
        this.scene = new THREE.Scene();
        this.camera = new THREE.PerspectiveCamera(35, 1, 0.1, 1000);
        this.renderer = new THREE.WebGLRenderer({ canvas, antialias: true, alpha: true });
        this.renderer.gammaOutput = true;
        this.renderer.gammaFactor = 2.2;
        this.renderer.shadowMap.enabled = true;
        this.renderer.shadowMap.type = THREE.PCFSoftShadowMap;
        this.controls = this.makeControls();
        this.radius = 1;
        this.addLights();
        new ResizeObserver(() => this.resize()).observe(canvas.parentElement);
        this.resize();
        requestAnimationFrame((now) => this.frame(now));
    }

    makeControls() {
        const controls = new THREE.OrbitControls(this.camera, this.canvas);
        controls.enableKeys = false;
        controls.enableDamping = true;
        controls.dampingFactor = 0.12;
        controls.screenSpacePanning = true;
        controls.addEventListener('change', () => this.redraw());
        return controls;
    }

    addLights() {
        this.scene.add(new THREE.HemisphereLight(0xffffff, 0x8f8a82, 0.7));
        this.sun = new THREE.DirectionalLight(0xfff6e8, 0.85);
        this.sun.castShadow = true;
        this.sun.shadow.mapSize.set(2048, 2048);
        this.sun.shadow.radius = 3;
        this.scene.add(this.sun, this.sun.target);
        const lamp = new THREE.DirectionalLight(0xffffff, 0.3);
        lamp.position.set(-0.4, 0.5, 1);
        this.camera.add(lamp);
        this.scene.add(this.camera);
    }

    // Puts light, shadow and grid to fit an object of this box.
    setBox(box) {
        const centre = box.getCenter(new THREE.Vector3());
        this.radius = Math.max(box.getSize(new THREE.Vector3()).length() / 2, 1e-6);
        const r = this.radius;
        this.controls.minDistance = r / 200;
        this.controls.maxDistance = r * 40;
        this.sun.target.position.copy(centre);
        this.sun.position.set(1, 1.4, -0.3).normalize().multiplyScalar(4 * r).add(centre);
        Object.assign(this.sun.shadow.camera, { left: -1.6 * r, right: 1.6 * r, top: 1.6 * r, bottom: -1.6 * r, near: r, far: 8 * r });
        this.sun.shadow.camera.updateProjectionMatrix();
        this.sun.shadow.bias = -0.0008;
        this.addGround(centre, box.min.y);
    }

    addGround(centre, height) {
        const step = 10 ** Math.floor(Math.log10(this.radius));
        const steps = 2 * Math.ceil((2.5 * this.radius) / step);
        this.grid = new THREE.GridHelper(step * steps, steps);
        this.grid.material = new THREE.LineBasicMaterial({ transparent: true, opacity: 0.35, depthWrite: false });
        const shadow = new THREE.Mesh(
            new THREE.PlaneBufferGeometry(step * steps, step * steps).rotateX(-Math.PI / 2),
            new THREE.ShadowMaterial({ opacity: 0.28, depthWrite: false }));
        shadow.receiveShadow = true;
        this.ground = new THREE.Group();
        this.ground.add(shadow, this.grid);
        this.ground.position.set(Math.round(centre.x / step) * step, height - this.radius * 1e-3, Math.round(centre.z / step) * step);
        this.scene.add(this.ground);
    }

    useThemeColours() {
        if (this.grid)
            this.grid.material.color.set(themeColour('--line'));
        this.redraw();
    }

    resize() {
        const { clientWidth, clientHeight } = this.canvas.parentElement;
        this.renderer.setPixelRatio(Math.min(window.devicePixelRatio, 2));
        this.renderer.setSize(clientWidth, clientHeight, false);
        this.camera.aspect = clientWidth / Math.max(clientHeight, 1);
        this.draw();
    }

    redraw() { this.isStale = true; }

    frame(now) {
        const seconds = Math.min((now - (this.lastFrame || now)) / 1000, 0.25);
        this.lastFrame = now;
        this.onFrame.forEach((call) => call(seconds));
        this.controls.update();
        if (this.isStale)
            this.draw();
        requestAnimationFrame((next) => this.frame(next));
    }

    draw() {
        this.isStale = false;
        const distance = this.camera.position.distanceTo(this.controls.target);
        this.camera.near = Math.max(distance - 8 * this.radius, distance / 100);
        this.camera.far = distance + 12 * this.radius;
        this.camera.updateProjectionMatrix();
        if (this.ground)
            this.ground.visible = this.hasGrid && this.camera.position.y > this.ground.position.y;
        this.beforeDraw.forEach((call) => call());
        this.renderer.render(this.scene, this.camera);
        this.onDraw.forEach((call) => call());
    }

    // Looks at the whole box, from where the camera is or from a direction.
    fit(box, direction = this.camera.position.clone().sub(this.controls.target)) {
        const centre = box.getCenter(new THREE.Vector3());
        this.controls.target.copy(centre);
        this.camera.position.copy(centre).addScaledVector(direction.normalize(), this.radius);
        this.camera.lookAt(centre);
        const distance = Math.max(this.distanceToSee(box, centre) * 1.08, this.radius / 50);
        this.camera.position.copy(centre).addScaledVector(direction, distance);
        this.controls.update();
        this.redraw();
    }

    distanceToSee(box, centre) {
        const slopeY = Math.tan(THREE.Math.degToRad(this.camera.fov / 2));
        const slopeX = slopeY * this.camera.aspect;
        const inverse = this.camera.quaternion.clone().conjugate();
        const distances = cornersOf(box).map((corner) => {
            const { x, y, z } = corner.sub(centre).applyQuaternion(inverse);
            return z + Math.max(Math.abs(x) / slopeX, Math.abs(y) / slopeY);
        });
        return Math.max(...distances);
    }

    // Turns around the target, by radians.
    orbit(right, up) {
        const offset = new THREE.Spherical().setFromVector3(this.camera.position.clone().sub(this.controls.target));
        offset.theta += right;
        offset.phi = Math.min(Math.max(offset.phi - up, 0.001), Math.PI - 0.001);
        this.camera.position.setFromSpherical(offset).add(this.controls.target);
        this.redraw();
    }

    zoom(factor) {
        this.camera.position.sub(this.controls.target).multiplyScalar(factor).add(this.controls.target);
        this.redraw();
    }

    // Moves sideways, by parts of the distance.
    pan(right, up) {
        const distance = this.camera.position.distanceTo(this.controls.target);
        const move = new THREE.Vector3(right, up, 0).multiplyScalar(distance).applyQuaternion(this.camera.quaternion);
        this.camera.position.add(move);
        this.controls.target.add(move);
        this.redraw();
    }

    // Where a point is on the canvas, in pixels; null behind the camera.
    project(point) {
        const { x, y, z } = point.clone().project(this.camera);
        if (z > 1)
            return null;
        return { x: ((x + 1) / 2) * this.canvas.clientWidth, y: ((1 - y) / 2) * this.canvas.clientHeight };
    }

    // The nearest of some objects at a place of the window.
    pick(clientX, clientY, objects) {
        const { left, top, width, height } = this.canvas.getBoundingClientRect();
        const caster = new THREE.Raycaster();
        caster.params.Points.threshold = caster.linePrecision = this.radius / 100;
        caster.setFromCamera({ x: ((clientX - left) / width) * 2 - 1, y: 1 - ((clientY - top) / height) * 2 }, this.camera);
        const hits = caster.intersectObjects(objects);
        return hits.length > 0 ? hits[0].object : null;
    }
}

function cornersOf({ min, max }) {
    const corners = [];
    for (const x of [min.x, max.x])
        for (const y of [min.y, max.y])
            for (const z of [min.z, max.z])
                corners.push(new THREE.Vector3(x, y, z));
    return corners;
}

function themeColour(name) {
    return getComputedStyle(document.documentElement).getPropertyValue(name).trim();
}
