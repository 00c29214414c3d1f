// All tests of the player page in one browser. Run by scripts/test web.

import './files.tests.mjs';
import './sound.tests.mjs';
import './exports.tests.mjs';
import './controls.tests.mjs';
import './screens.tests.mjs';
