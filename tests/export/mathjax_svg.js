// Reads MathML files with MathJax, an independent MathML reader, and draws each as SVG. Prints
// "ok FILE" for each that reads without an error, "error FILE: REASON" for each that does not,
// and ends with status 1 when any failed.
// Usage: node mathjax_svg.js MATHJAX_PREFIX FILE...  (MATHJAX_PREFIX holds node_modules/mathjax-full)
'use strict';
const fs = require('fs');
const path = require('path');

const [prefix, ...files] = process.argv.slice(2);
const mj = (name) => require(path.join(prefix, 'node_modules', 'mathjax-full', 'js', name));
const {mathjax} = mj('mathjax.js');
const {MathML} = mj('input/mathml.js');
const {SVG} = mj('output/svg.js');
const {liteAdaptor} = mj('adaptors/liteAdaptor.js');
const {RegisterHTMLHandler} = mj('handlers/html.js');

const adaptor = liteAdaptor();
RegisterHTMLHandler(adaptor);
let parseError = null;
const input = new MathML({
  // Markup that MathJax cannot read, and children in the wrong number, are errors here rather
  // than red boxes in the drawing.
  parseError: (node) => { parseError = 'cannot parse'; },
  verify: {checkArity: true, checkAttributes: true, fullErrors: true},
});
const doc = mathjax.document('', {InputJax: input, OutputJax: new SVG({fontCache: 'none'})});

let failed = 0;
for (const file of files) {
  parseError = null;
  let reason = null;
  try {
    const svg = adaptor.outerHTML(doc.convert(fs.readFileSync(file, 'utf8'), {display: true}));
    const merror = svg.match(/data-mml-node="merror"[^>]*>[\s\S]*?<\/g>/);
    if (parseError)
      reason = parseError;
    else if (merror || !svg.includes('<svg'))
      reason = 'MathJax shows an error: ' + (merror ? merror[0].slice(0, 200) : svg.slice(0, 200));
  } catch (e) {
    reason = String(e && e.message || e);
  }
  if (reason) {
    ++failed;
    console.log('error ' + file + ': ' + reason);
  } else {
    console.log('ok ' + file);
  }
}
process.exit(failed > 0 ? 1 : 0);
