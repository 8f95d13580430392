// The panel's texts: the selected object, findings, and the asset. Names and texts come from files: they become text,
// never markup.

function element(tag, properties = {}, ...children) {
    const made = Object.assign(document.createElement(tag), properties);
    made.append(...children.filter((child) => child !== '' && child !== null && child !== undefined && child !== false));
    return made;
}

function counted(count, one, many = `${one}s`) {
    return `${count.toLocaleString('en')} ${count === 1 ? one : many}`;
}

function decimal(number) {
    return typeof number === 'number' ? String(Number(number.toPrecision(6))) : number;
}

// A list of names and values; those without a value are left out.
function definitions(rows) {
    const list = element('dl');
    for (const [name, value] of rows)
        if (value !== undefined && value !== null && value !== '')
            list.append(element('dt', { textContent: name }), element('dd', { className: 'numbers' }, typeof value === 'number' ? value.toLocaleString('en') : value));
    return list;
}

function vector(numbers) { return numbers && numbers.map(decimal).join('  '); }

// Rows 1 to 4 of three numbers each.
function matrix(numbers) {
    return numbers && [0, 3, 6, 9].map((start) => vector(numbers.slice(start, start + 3))).join('\n');
}

function colour(numbers) {
    if (!numbers)
        return null;
    const swatch = element('span', { className: 'swatch' });
    const bytes = numbers.map((number) => Math.round(255 * Math.min(Math.max(Number(number) || 0, 0), 1)));
    swatch.style.display = 'inline-block';
    swatch.style.background = `rgb(${bytes.join(',')})`;
    return element('span', {}, swatch, vector(numbers));
}

const kKinds = { entry: 'Entry', reference: 'Reference', attachment: 'Attachment point', bone: 'Bone' };

function kindOfObject(node) { return kKinds[node.kind] || ''; }

function detailsOfNode(node, data) {
    if (node.kind === 'entry')
        return definitions(entryRows(node, data.meshes[node.mesh]));
    if (node.kind === 'reference')
        return definitions([['asset', node.asset], ['kuid', node.kuid], ['kind', node.type], ['author', node.author]]);
    if (node.kind === 'attachment')
        return definitions([['version', node.version], ['position', vector(node.matrix && node.matrix.slice(9))], ['matrix', matrix(node.matrix)]]);
    return definitions([['version', node.version], ['position', vector(node.position)], ['rotation', vector(node.rotation)]]);
}

function entryRows(node, mesh) {
    const animation = node.animation;
    return [
        ['mesh', mesh.file], ['version', mesh.version], ['bytes', mesh.size],
        ['vertices', mesh.vertices], ['polygons', mesh.polygons], ['bones', mesh.bones], ['textures', mesh.textures],
        ['attachments', mesh.attachments], ['their version', mesh.attachmentVersion],
        ['animation', animation && `${animation.file}\n${counted(animation.frames, 'frame')}, ${animation.rate} per second`],
    ];
}

function chunkDetails(chunk, isSelected) {
    const material = chunk.material || {};
    const swatch = element('span', { className: 'swatch' });
    const tint = colour(material.diffuse);
    if (tint)
        swatch.style.background = tint.firstChild.style.background;
    const summary = element('summary', {}, swatch, element('span', { className: 'name', textContent: `${chunk.number}  ${material.name || 'without a name'}` }),
        element('span', { className: 'note kind', textContent: chunk.count === undefined ? '' : counted(chunk.count, shapeOf(chunk)) }));
    const details = element('details', { className: 'chunk', open: isSelected }, summary, definitions([
        ['bone', chunk.bone], ['vertices', chunk.vertices], ['indices', chunk.indices], ['normals', chunk.normals],
        ['diffuse', tint], ['ambient', colour(material.ambient)], ['specular', colour(material.specular)], ['emissive', colour(material.emissive)],
        ['opacity', decimal(material.opacity)], ['specular power', decimal(material.power)], ['two-sided', material.twoSided === undefined ? '' : material.twoSided ? 'yes' : 'no'],
        ['material version', material.version],
        ['textures', (material.textures || []).map(textureLine).join('\n')],
    ]));
    details.classList.toggle('selected', isSelected);
    return details;
}

function shapeOf({ primitive }) {
    return primitive === 1 ? 'point' : primitive === 2 || primitive === 3 ? 'line' : 'triangle';
}

const kTextureKinds = ['ambient', 'diffuse', 'specular', 'shine', 'shine strength', 'self-illumination', 'opacity', 'filter colour',
    'bump', 'reflection', 'refraction', 'displacement'];

function textureLine({ name, kind, amount }) {
    return `${name || 'without a name'}: ${kTextureKinds[kind] || `kind ${kind}`}${amount === 1 ? '' : `, ${decimal(amount)}`}`;
}

// A finding about the file of an entry leads to that entry.
function showFindings(host, data, onSelect) {
    host.replaceChildren();
    for (const text of data.problems)
        host.append(element('div', { className: 'finding error' }, element('span', { className: 'severity', textContent: 'not as it should be' }), element('p', { textContent: text })));
    if (data.findings.length === 0)
        host.append(element('p', { className: 'all-good', textContent: data.problems.length === 0 ? '✓ Nothing is wrong.' : '' }));
    for (const finding of data.findings)
        host.append(findingCard(finding, data, onSelect));
    host.append(element('p', { className: 'kind', textContent: data.summary }));
}

function findingCard(finding, data, onSelect) {
    const number = nodeOfFinding(finding, data);
    const card = element(number === null ? 'div' : 'button', { className: `finding ${finding.severity}`, title: finding.meaning },
        element('span', { className: 'severity', textContent: finding.severity }), element('code', { textContent: finding.code }),
        element('p', { textContent: finding.message }),
        element('span', { className: 'place', textContent: [finding.file, finding.place].filter(Boolean).join(': ') }));
    if (number !== null)
        card.onclick = () => onSelect(number, finding.chunk || null);
    return card;
}

function nodeOfFinding(finding, data) {
    const isAbout = ({ kind, name, mesh }) => kind === 'entry' && (finding.entry ? name === finding.entry : isSameFile(data.meshes[mesh].file, finding.file));
    const number = data.nodes.findIndex(isAbout);
    return number < 0 ? null : number;
}

// An entry whose mesh isn't loaded has no file.
function isSameFile(one, other) {
    return one !== undefined && other !== undefined && one.toLowerCase() === other.toLowerCase();
}

function findingsBadge(data) {
    const errors = data.problems.length + data.findings.filter((finding) => finding.severity === 'error').length;
    const warnings = data.findings.length + data.problems.length - errors;
    const badge = (kind, text) => element('span', { className: `badge ${kind}`, textContent: text });
    if (errors + warnings === 0)
        return [badge('good', '✓')];
    return [errors > 0 && badge('error', errors), warnings > 0 && badge('warning', warnings)].filter(Boolean);
}

function showAbout(host, data) {
    const { asset } = data;
    const entries = data.nodes.filter(({ kind }) => kind === 'entry');
    host.replaceChildren(definitions([
        ['file', data.path], ['name', asset.name], ['kuid', asset.kuid], ['kind', asset.kind], ['author', asset.author], ['build', asset.build],
        ['description', asset.description],
        ['entries', entries.length], ['triangles', entries.reduce((sum, { mesh }) => sum + data.meshes[mesh].polygons, 0)],
    ]));
}
