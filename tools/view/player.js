// Plays the animations: all of them, one, or none, which is the rest pose. A time and a frame count from 0.
class Player {
    constructor(gltf, stage) {
        this.stage = stage;
        this.mixer = new THREE.AnimationMixer(gltf.scene);
        this.tracks = gltf.animations.map((clip, i) => {
            const { entry, framesPerSecond } = gltf.parser.json.animations[i].extras;
            return { name: entry || clip.name || `Animation ${i + 1}`, rate: framesPerSecond, duration: clip.duration, action: this.mixer.clipAction(clip) };
        });
        this.choice = 'all';
        this.time = 0;
        this.speed = 1;
        this.isPlaying = false;
        this.onChange = () => {};
        stage.onFrame.push((seconds) => this.advance(seconds));
        if (this.tracks.length > 0)
            this.apply();
    }

    chosen() {
        if (this.choice === 'all')
            return this.tracks;
        return this.choice === 'rest' ? [] : [this.tracks[Number(this.choice)]];
    }

    duration() { return Math.max(0, ...this.chosen().map((track) => track.duration)); }
    rate() { return Math.max(1, ...this.chosen().map((track) => track.rate)); }
    frame() { return this.time * this.rate(); }
    lastFrame() { return Math.round(this.duration() * this.rate()); }

    choose(choice) {
        this.choice = choice;
        this.time = Math.min(this.time, this.duration());
        this.apply();
    }

    play(isPlaying) {
        this.isPlaying = isPlaying && this.duration() > 0;
        this.onChange();
    }

    // Pauses, and goes to the next or previous whole frame.
    step(by) {
        const count = this.lastFrame() + 1;
        const from = by > 0 ? Math.floor(this.frame() + 1e-3) : Math.ceil(this.frame() - 1e-3);
        this.isPlaying = false;
        this.seek(((from + by + count) % count) / this.rate());
    }

    seek(time) {
        this.time = Math.min(Math.max(time, 0), this.duration());
        this.apply();
    }

    advance(seconds) {
        if (!this.isPlaying)
            return;
        this.time = (this.time + seconds * this.speed) % this.duration();
        this.apply();
    }

    apply() {
        const chosen = this.chosen();
        this.tracks.filter((track) => !chosen.includes(track)).forEach((track) => track.action.stop());
        for (const { action, duration } of chosen) {
            action.play();
            action.time = duration > 0 && this.time > duration ? this.time % duration : this.time;
        }
        this.mixer.update(0);
        this.stage.scene.updateMatrixWorld();
        this.stage.redraw();
        this.onChange();
    }
}
