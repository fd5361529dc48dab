// Validates glTF files: node validate_gltf.mjs <folder with node_modules> <file>...
// Prints one line per error and ends with 1 when there is any.
import fs from 'node:fs';
import path from 'node:path';
import {createRequire} from 'node:module';

const [folder, ...files] = process.argv.slice(2);
const validator = createRequire(path.resolve(folder, 'node_modules/x.js'))('gltf-validator');

let errors = 0;
for (const file of files) {
  const report = await validator.validateBytes(new Uint8Array(fs.readFileSync(file)), {
    uri: path.basename(file),
    maxIssues: 0,
    externalResourceFunction: async (uri) =>
        new Uint8Array(fs.readFileSync(path.resolve(path.dirname(file), decodeURIComponent(uri)))),
  });
  for (const issue of report.issues.messages.filter((message) => message.severity === 0)) {
    ++errors;
    console.log(`${file}: ${issue.code} ${issue.pointer ?? ''} ${issue.message}`);
  }
}
process.exit(errors > 0 ? 1 : 0);
