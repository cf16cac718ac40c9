const THOUSANDS = new Intl.NumberFormat("en");
const PERCENT = new Intl.NumberFormat("en", { style: "percent", maximumFractionDigits: 0 });
const EXACT_PERCENT = new Intl.NumberFormat("en", { style: "percent", maximumFractionDigits: 1 });
const POINTS = new Intl.NumberFormat("en", { maximumFractionDigits: 1, signDisplay: "exceptZero" });

/** @param {number} number */
export function thousands(number) {
    return THOUSANDS.format(number);
}

/**
 * Few recordings of many are not none.
 *
 * @param {number} share
 */
export function percent(share) {
    return (share > 0 && share < 0.01 ? EXACT_PERCENT : PERCENT).format(share);
}

/**
 * A difference of shares, in points of a hundred.
 *
 * @param {number} difference
 */
export function points(difference) {
    return POINTS.format(100 * difference).replace("-", "\u2212");
}

/**
 * A probability.
 *
 * @param {number} q
 */
export function chance(q) {
    return q < 0.001 ? "<0.001" : q.toPrecision(2);
}

/**
 * "1 key", "2 keys".
 *
 * @param {number} number
 * @param {string} thing
 */
export function some(number, thing) {
    return `${thousands(number)} ${thing}${number === 1 ? "" : "s"}`;
}
