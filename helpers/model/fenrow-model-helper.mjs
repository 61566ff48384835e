// Fenrow's model helper: loads the user's GGUF model once with llama.cpp (the
// prebuilt CPU binary that node-llama-cpp ships) and answers guided
// generation requests, one JSON object per line each way.
//
//   node fenrow-model-helper.mjs --model PATH [--threads N] [--context-size N] [--echo]
//
// stdout carries only protocol lines; llama.cpp's own log goes to stderr.
//   {"event":"loading","progress":0.42}
//   {"event":"ready","model":{...}}            then requests are read
//   {"event":"failed","message":"..."}         then the process exits with 1
// Requests on stdin, answered in order:
//   {"id":1,"instruction":"...","prompt":"...","schema":{...},"temperature":0.1}
//      -> {"id":1,"record":{...},"tokens":12,"seconds":0.4}  or  {"id":1,"error":"..."}
//   {"id":2,"try":true}  -> {"id":2,"tokens":40,"seconds":1.2,"tokensPerSecond":33.3,"text":"..."}
//   {"cancel":1}         -> the request with id 1 ends with {"id":1,"error":"cancelled"}
// With "progress":true a request also gets {"id":1,"progress":{"tokens":N}}
// lines while it generates. --echo (or FENROW_MODEL_HELPER_ECHO=1) answers a
// request with what it was given and the exact text the model was fed,
// without generating. The helper exits when stdin closes.
// FENROW_MODEL_HELPER_DEBUG=1 writes the stack of a failed request to stderr.
import { createInterface } from "node:readline";
import { statSync, openSync, readSync, closeSync } from "node:fs";
import path from "node:path";

// Nothing is ever downloaded or built at run time: the binary comes with the
// npm install or the engine is unavailable.
process.env.NODE_LLAMA_CPP_SKIP_DOWNLOAD = "true";

const EXIT_UNUSABLE_MODEL = 1;
const EXIT_USAGE = 2;
const EXIT_NO_ENGINE = 3;

function send(message) {
    process.stdout.write(JSON.stringify(message) + "\n");
}

function fail(message, code) {
    send({ event: "failed", message });
    process.exitCode = code;
    // Let stdout drain before leaving.
    process.stdout.write("", () => process.exit(code));
}

function parseArguments(argv) {
    const options = {
        modelPath: null,
        threads: 0,
        contextSize: 0,
        echo: process.env.FENROW_MODEL_HELPER_ECHO === "1",
    };
    for (let i = 0; i < argv.length; i++) {
        const arg = argv[i];
        const value = () => {
            if (i + 1 >= argv.length) throw new Error(`${arg} needs a value`);
            return argv[++i];
        };
        if (arg === "--model") options.modelPath = value();
        else if (arg === "--threads") options.threads = Number(value());
        else if (arg === "--context-size") options.contextSize = Number(value());
        else if (arg === "--echo") options.echo = true;
        else throw new Error(`unknown argument ${arg}`);
    }
    if (!options.modelPath) throw new Error("--model PATH is required");
    for (const key of ["threads", "contextSize"]) {
        if (!Number.isInteger(options[key]) || options[key] < 0) throw new Error(`--${key} must be a whole number`);
    }
    return options;
}

// A clear reason before llama.cpp is asked: its own errors about a file that
// is not a model are terse.
function checkModelFile(modelPath) {
    let info;
    try {
        info = statSync(modelPath);
    } catch {
        return `The model file ${modelPath} does not exist or cannot be read.`;
    }
    if (!info.isFile()) return `${modelPath} is not a file.`;
    const magic = Buffer.alloc(4);
    let fd;
    try {
        fd = openSync(modelPath, "r");
        readSync(fd, magic, 0, 4, 0);
    } catch {
        return `The model file ${modelPath} cannot be read.`;
    } finally {
        if (fd !== undefined) closeSync(fd);
    }
    if (magic.toString("latin1") !== "GGUF") return `${path.basename(modelPath)} is not a GGUF model file.`;
    return null;
}

// The schema goes with the prompt so that the model knows what it fills in;
// the grammar makes sure that it can write nothing else.
function userText(prompt, schema) {
    return `${prompt}\n\nAnswer with a JSON object that follows this JSON schema:\n${JSON.stringify(schema)}`;
}

let options;
try {
    options = parseArguments(process.argv.slice(2));
} catch (error) {
    fail(`fenrow-model-helper: ${error.message}`, EXIT_USAGE);
}

if (options) {
    const problem = checkModelFile(options.modelPath);
    if (problem) fail(problem, EXIT_UNUSABLE_MODEL);
    else await serve(options);
}

async function serve(options) {
    let llamaModule;
    let llama;
    try {
        llamaModule = await import("node-llama-cpp");
        llama = await llamaModule.getLlama({
            gpu: false,
            build: "never",
            usePrebuiltBinaries: true,
            skipDownload: true,
            progressLogs: false,
            logLevel: "error",
            logger: (level, message) => process.stderr.write(`llama.cpp ${level}: ${message}\n`),
            ...(options.threads > 0 ? { maxThreads: options.threads } : {}),
        });
    } catch (error) {
        fail(`The llama.cpp engine cannot start here: ${error.message}`, EXIT_NO_ENGINE);
        return;
    }
    const { LlamaChatSession } = llamaModule;

    let model;
    let context;
    let lastProgress = -1;
    try {
        model = await llama.loadModel({
            modelPath: options.modelPath,
            gpuLayers: 0,
            onLoadProgress: (progress) => {
                // Hundredths are enough for a progress bar.
                const rounded = Math.floor(progress * 100) / 100;
                if (rounded > lastProgress) {
                    lastProgress = rounded;
                    send({ event: "loading", progress: rounded });
                }
            },
        });
        context = await model.createContext({
            sequences: 1,
            ...(options.contextSize > 0 ? { contextSize: options.contextSize } : {}),
            ...(options.threads > 0 ? { threads: options.threads } : {}),
        });
    } catch (error) {
        fail(`${path.basename(options.modelPath)} is not a usable model: ${error.message}`, EXIT_UNUSABLE_MODEL);
        return;
    }
    const sequence = context.getSequence();
    const metadata = model.fileInfo.metadata ?? {};
    send({
        event: "ready",
        model: {
            name: metadata.general?.name ?? path.basename(options.modelPath, ".gguf"),
            path: options.modelPath,
            size: statSync(options.modelPath).size,
            architecture: metadata.general?.architecture ?? "",
            contextSize: context.contextSize,
            trainContextSize: model.trainContextSize,
            threads: context.currentThreads,
        },
        echo: options.echo,
    });

    const grammars = new Map();
    async function grammarFor(schema) {
        const key = JSON.stringify(schema);
        if (!grammars.has(key)) grammars.set(key, await llama.createGrammarForJsonSchema(schema));
        return grammars.get(key);
    }

    // One fresh session per request on the one sequence, its history cleared,
    // so that no request sees another's text.
    async function run(request, controller) {
        const instruction = request.instruction;
        const prompt = request.prompt;
        const schema = request.schema;
        const temperature = request.temperature ?? 0.1;
        if (typeof instruction !== "string" || typeof prompt !== "string") throw new Error("instruction and prompt must be strings");
        if (schema === null || typeof schema !== "object" || Array.isArray(schema)) throw new Error("schema must be a JSON object");
        if (typeof temperature !== "number" || temperature < 0) throw new Error("temperature must be a number not below 0");

        await sequence.clearHistory();
        const session = new LlamaChatSession({ contextSequence: sequence, systemPrompt: instruction, autoDisposeSequence: false });
        try {
            const text = userText(prompt, schema);
            if (options.echo) {
                // The real path up to the model's first token: what the
                // sequence holds then, less that token, is what it was fed.
                let generated = [];
                await session.prompt(text, { maxTokens: 1, temperature, onToken: (chunk) => { generated = chunk; } });
                const fed = sequence.contextTokens.slice();
                if (generated.length > 0 && fed.length >= generated.length
                    && generated.every((token, i) => fed[fed.length - generated.length + i] === token)) {
                    fed.length -= generated.length;
                }
                return {
                    record: { instruction, prompt, schema, temperature, modelText: model.detokenize(fed, true) },
                    tokens: 0,
                    seconds: 0,
                };
            }
            const grammar = await grammarFor(schema);
            const started = performance.now();
            let tokens = 0;
            let lastReport = 0;
            const response = await session.prompt(text, {
                grammar,
                temperature,
                signal: controller.signal,
                onToken: (chunk) => {
                    tokens += chunk.length;
                    // Without a limit on the answer, the context is the limit:
                    // past it the session would start forgetting the prompt.
                    if (sequence.nextTokenIndex >= context.contextSize - 1) {
                        controller.abort(new Error(`the answer did not fit in the model's context of ${context.contextSize} tokens`));
                    }
                    if (request.progress && performance.now() - lastReport > 100) {
                        lastReport = performance.now();
                        send({ id: request.id, progress: { tokens } });
                    }
                },
            });
            let record;
            try {
                record = grammar.parse(response);
            } catch (error) {
                throw new Error(`the model's answer is not a record of the schema: ${error.message}`);
            }
            return { record, tokens, seconds: (performance.now() - started) / 1000 };
        } finally {
            session.dispose({ disposeSequence: false });
        }
    }

    // The "Try it" request: a short answer, timed.
    async function tryModel(controller) {
        await sequence.clearHistory();
        const session = new LlamaChatSession({
            contextSequence: sequence,
            systemPrompt: "You help plan a to-do list. Answer briefly.",
            autoDisposeSequence: false,
        });
        try {
            let tokens = 0;
            let firstTokenAt = null;
            const started = performance.now();
            const text = await session.prompt("List three short steps to prepare for a trip.", {
                temperature: 0.1,
                maxTokens: 48,
                signal: controller.signal,
                onToken: (chunk) => {
                    if (firstTokenAt === null) firstTokenAt = performance.now();
                    tokens += chunk.length;
                },
            });
            const seconds = (performance.now() - started) / 1000;
            // Speed of writing, from the first token on; the prompt's reading
            // is the first-token time.
            const writing = firstTokenAt === null ? 0 : (performance.now() - firstTokenAt) / 1000;
            return {
                tokens,
                seconds,
                firstTokenSeconds: firstTokenAt === null ? seconds : (firstTokenAt - started) / 1000,
                tokensPerSecond: tokens > 1 && writing > 0 ? (tokens - 1) / writing : 0,
                text,
            };
        } finally {
            session.dispose({ disposeSequence: false });
        }
    }

    const queue = [];
    const controllers = new Map();
    let busy = false;
    let closing = false;

    async function drain() {
        if (busy) return;
        busy = true;
        while (queue.length > 0 && !closing) {
            const request = queue.shift();
            const controller = controllers.get(request.id);
            try {
                if (controller.signal.aborted) throw controller.signal.reason;
                const answer = request.try ? await tryModel(controller) : await run(request, controller);
                send({ id: request.id, ...answer });
            } catch (error) {
                if (process.env.FENROW_MODEL_HELPER_DEBUG) process.stderr.write(`${error?.stack}\n`);
                send({ id: request.id, error: error?.message ?? String(error) });
            } finally {
                controllers.delete(request.id);
            }
        }
        busy = false;
    }

    const input = createInterface({ input: process.stdin, crlfDelay: Infinity });
    input.on("line", (line) => {
        if (line.trim() === "") return;
        let request;
        try {
            request = JSON.parse(line);
        } catch (error) {
            send({ id: null, error: `the request is not JSON: ${error.message}` });
            return;
        }
        if (request === null || typeof request !== "object") {
            send({ id: null, error: "the request is not a JSON object" });
        } else if ("cancel" in request) {
            controllers.get(request.cancel)?.abort(new Error("cancelled"));
        } else if (!Number.isInteger(request.id) || controllers.has(request.id)) {
            send({ id: request.id ?? null, error: "the request needs an id, a whole number not in use" });
        } else {
            controllers.set(request.id, new AbortController());
            queue.push(request);
            drain();
        }
    });
    // Fenrow is gone: stop what runs and leave.
    input.on("close", async () => {
        closing = true;
        for (const controller of controllers.values()) controller.abort(new Error("cancelled"));
        try {
            await context.dispose();
            await model.dispose();
            await llama.dispose();
        } finally {
            process.exit(0);
        }
    });
}
