import js from "@eslint/js";

export default [
    js.configs.recommended,
    {
        languageOptions: { ecmaVersion: 2022, sourceType: "module" },
        rules: {
            "no-undef": "off", // the type checker knows what a browser has
            "no-control-regex": "off",
            eqeqeq: "error",
            "no-var": "error",
            "prefer-const": "error",
            "max-len": ["error", { code: 120 }],
            "max-depth": ["error", 4],
            complexity: ["error", 14],
        },
    },
    { files: ["report/page/*.js"], rules: { "max-lines-per-function": ["error", 30] } },
];
